// The latest answers to each Arithmetic fact, kept per student beside the answers
// themselves, so that a student's fluency grid reads one row per fact and a whole
// class's reads a few hundred thousand rows instead of every answer ever given.
#pragma once

#include "core/HistoryTypes.h"

#include <cstdint>
#include <vector>

class SqliteDatabase;

// Adds the answer as the latest to its fact, dropping the oldest past
// RecentAnswersPerFact.
void addRecentFactAnswer(SqliteDatabase &db, std::int64_t studentId, const ArithmeticFact &fact,
                         const FactAnswer &answer);

// Builds a student's facts again from the answers, in the order the tests were
// started: after history was given to the student, or by the upgrade that added them.
void rebuildRecentFacts(SqliteDatabase &db, std::int64_t studentId);
void rebuildAllRecentFacts(SqliteDatabase &db);

// Every fact the student has answered, ordered by operation, then number1, then number2.
std::vector<ArithmeticFact> readRecentFacts(SqliteDatabase &db, std::int64_t studentId);
