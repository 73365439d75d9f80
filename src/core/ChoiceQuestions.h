// Multiple-choice questions are stored once each, with their texts, however often
// and in whatever order their choices were shown; an answer names the question,
// the order of its choices on the screen and the position chosen.
#pragma once

#include "core/HistoryTypes.h"

#include <array>
#include <cstdint>
#include <string>

class SqliteDatabase;

// A stored question's texts in slot order: the right answer in slot 0, then the
// wrong answers in text order, so that every showing of a question is the same row.
struct ChoiceSlots {
    std::string question;
    std::array<std::string, 4> slots;
};

struct StoredChoice {
    std::int64_t questionId = 0;
    int shown = 0; // the order shown, 0..23 (see slotsShown)
};

// Finds the answer's question among the stored ones or adds it.
StoredChoice storeChoiceQuestion(SqliteDatabase &db, const ChoiceAnswer &answer);

// For each position on the screen, the slot of the text shown there.
std::array<int, 4> slotsShown(int shown);

// The position on the screen of the right answer.
int rightPosition(int shown);
