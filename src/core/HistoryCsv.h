// The history as CSV: one row per recorded answer of every test and practice
// round, oldest test first, in the conventions of the class-results export
// (UTF-8 with a byte-order mark, RFC 4180) and with the header
// Student,Started,Subject,Level,Question,Answer,Right answer,Correct,Seconds,Practice
#pragma once

#include <filesystem>
#include <optional>
#include <ostream>
#include <string>

class SqliteDatabase;

// Streams every row to out; throws SqliteError when the database fails.
void writeHistoryCsv(SqliteDatabase &db, std::ostream &out);

// For the command line: reads the history in dataDir and writes nothing into the
// folder. A folder without a history gives the header alone. On failure, a
// one-line message naming the file and the cause.
std::optional<std::string> exportHistoryCsv(const std::filesystem::path &dataDir,
                                            std::ostream &out);
