// The built-in test bank, built in memory when there is no Tests file and
// restored by the revert buttons of the Tests screen.
#pragma once

#include "TestBank.h"

#include <string>

// Rebuilds the whole bank, dropping any subject the user added.
void BuildDefaultTests(TestBank &bank);

// Rebuild one built-in part of the bank. They reset test lengths and the
// questions in use; slots beyond the defaults keep whatever they held.
void DefaultArithmetic(TestBank &bank);
void DefaultSpelling(TestBank &bank);
void DefaultGeography(TestBank &bank);
void DefaultHistory(TestBank &bank);
void DefaultMusic(TestBank &bank);
void DefaultScience(TestBank &bank);

// Stores one question's five texts; changes no count or bound.
void AddQuestion(TestBank &bank, int subject, int level, int slot, const std::string &text,
                 const std::string &answer, const std::string &wrong1, const std::string &wrong2,
                 const std::string &wrong3);
