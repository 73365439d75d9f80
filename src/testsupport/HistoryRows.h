// The answer history as the tests read it back: the rows of its CSV (without
// the header), each split into its fields, and a test recorded in few words.
#pragma once

#include <string>
#include <string_view>
#include <vector>

class History;

using CsvRow = std::vector<std::string>;

// Splits RFC 4180 text into rows of fields; a byte-order mark at the start is dropped.
std::vector<CsvRow> parseCsv(std::string_view text);

// Every recorded answer, as the history's CSV gives it, header left out.
std::vector<CsvRow> historyRows(History &history);

// The named column of each row ("Student", "Question", ...), in row order.
std::vector<std::string> historyColumn(const std::vector<CsvRow> &rows, const std::string &name);

// A finished Arithmetic test of student in subject 0 at level, one "1 + n = _"
// answer per entry of rights.
void recordArithmeticTest(History &history, int student, int level,
                          const std::vector<bool> &rights);
