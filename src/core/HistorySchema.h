// The tables of the history database, and the steps that bring a file of an
// older version up to the current one. The file's user_version is its version.
// A step, once released, never changes: a new version adds a step.
#pragma once

class SqliteDatabase;

// 1: students, subjects, tests and every answer.
// 2: the latest answers to each Arithmetic fact per student, and tests found by
//    subject and level, for the fluency views.
constexpr int HistorySchemaVersion = 2;

// Upgrades the database one version at a time, each step in a transaction of its
// own, up to target (which tests set lower to make an older file). A new, empty
// database starts at 0. Throws SqliteError; a file holding other tables than the
// history's is reported as not being a database.
void upgradeHistorySchema(SqliteDatabase &db, int target = HistorySchemaVersion);
