// The built-in test bank, built in memory when there is no Tests file and
// restored by the revert buttons of the Tests screen.
#pragma once

#include "TestBank.h"

#include <string>

// Rebuilds the whole bank, dropping any subject the user added.
void buildDefaultTests(TestBank &bank);

// Rebuild one built-in part of the bank. They reset test lengths and the
// questions in use; slots beyond the defaults keep whatever they held.
void defaultArithmetic(TestBank &bank);
void defaultSpelling(TestBank &bank);
void defaultGeography(TestBank &bank);
void defaultHistory(TestBank &bank);
void defaultMusic(TestBank &bank);
void defaultScience(TestBank &bank);

// Stores one question's five texts; changes no count or bound.
void addQuestion(TestBank &bank, int subject, int level, int slot, const std::string &text,
                 const std::string &answer, const std::string &wrong1, const std::string &wrong2,
                 const std::string &wrong3);
