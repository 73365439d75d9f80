#include "HistoryRows.h"

#include "core/History.h"

#include <algorithm>
#include <sstream>

namespace {

const std::vector<std::string> Header = {"Student",  "Started", "Subject",      "Level",
                                         "Question", "Answer",  "Right answer", "Correct",
                                         "Seconds",  "Practice"};

} // namespace

std::vector<CsvRow> parseCsv(std::string_view text)
{
    if (text.substr(0, 3) == "\xEF\xBB\xBF")
        text.remove_prefix(3);
    std::vector<CsvRow> rows;
    CsvRow row;
    std::string field;
    bool quoted = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (quoted) {
            if (c == '"' && i + 1 < text.size() && text[i + 1] == '"') {
                field += '"';
                ++i;
            } else if (c == '"') {
                quoted = false;
            } else {
                field += c;
            }
        } else if (c == '"') {
            quoted = true;
        } else if (c == ',') {
            row.push_back(std::move(field));
            field.clear();
        } else if (c == '\r' && i + 1 < text.size() && text[i + 1] == '\n') {
            row.push_back(std::move(field));
            field.clear();
            rows.push_back(std::move(row));
            row.clear();
            ++i;
        } else {
            field += c;
        }
    }
    if (!field.empty() || !row.empty()) {
        row.push_back(std::move(field));
        rows.push_back(std::move(row));
    }
    return rows;
}

std::vector<CsvRow> historyRows(History &history)
{
    std::ostringstream out;
    if (!history.exportCsv(out))
        return {};
    std::vector<CsvRow> rows = parseCsv(out.str());
    if (rows.empty() || rows.front() != Header)
        return {{"the CSV does not start with its header"}};
    rows.erase(rows.begin());
    return rows;
}

std::vector<std::string> historyColumn(const std::vector<CsvRow> &rows, const std::string &name)
{
    const auto column =
        static_cast<std::size_t>(std::find(Header.begin(), Header.end(), name) - Header.begin());
    std::vector<std::string> values;
    for (const CsvRow &row : rows)
        values.push_back(column < row.size() ? row[column] : "<missing>");
    return values;
}

void recordArithmeticTest(History &history, int student, int level, const std::vector<bool> &rights)
{
    HistoryRecorder &recorder = history.recorder();
    recorder.beginTest({student, 0, level, 60, false});
    int right = 0;
    for (std::size_t i = 0; i < rights.size(); ++i) {
        const auto n = static_cast<std::int64_t>(i) + 1;
        recorder.recordArithmetic(
            {1, n, 1 + n, 0, 2, std::to_string(rights[i] ? 1 + n : n), rights[i]});
        right += rights[i] ? 1 : 0;
    }
    const int wrong = static_cast<int>(rights.size()) - right;
    recorder.endTest({right - wrong, right, wrong, false});
}
