// The stored questions of the default test bank: one row per question,
// read by the per-subject builders of DefaultBank.h.
#pragma once

#include <array>

struct DefaultQuestionRow {
    int subject; // 1 Spelling, 2 Geography, 3 History, 4 Music, 5 Science
    int level;   // 0 (K) .. 12
    int slot;    // 0 .. 11, filled from 0 upwards within a subject and level
    const char *text;
    const char *answer;
    const char *wrong1;
    const char *wrong2;
    const char *wrong3;
};

// 156 Spelling rows (12 per level) and 78 rows (6 per level) for each of the
// other four subjects, ordered by subject, then level, then slot.
constexpr int DefaultQuestionCount = 156 + 4 * 78;

extern const std::array<DefaultQuestionRow, DefaultQuestionCount> DefaultQuestions;
