// For the history's tests: a data folder of their own, a clock set by hand, a
// history opened on them with a roster and the six built-in subjects, and short
// ways to record a test and read the CSV back.
#pragma once

#include "core/History.h"
#include "core/HistoryClock.h"
#include "core/HistoryCsv.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <random>
#include <sstream>
#include <string>
#include <vector>

inline const std::vector<std::string> BuiltInSubjects = {"Arithmetic", "Spelling", "Geography",
                                                         "History",    "Music",    "Science"};

// A field of a CSV row without quoted fields: 0 Student, 2 Subject.
inline std::string csvField(const std::string &row, int index)
{
    std::size_t begin = 0;
    for (int i = 0; i < index; ++i)
        begin = row.find(',', begin) + 1;
    return row.substr(begin, row.find(',', begin) - begin);
}

// Who took the tests in the CSV, in the order recorded.
inline std::vector<std::string> takers(const std::vector<std::string> &rows)
{
    std::vector<std::string> names;
    for (const std::string &row : rows) {
        if (names.empty() || names.back() != csvField(row, 0))
            names.push_back(csvField(row, 0));
    }
    return names;
}

class HistoryTest : public ::testing::Test {
protected:
    HistoryTest()
    {
        std::random_device seed;
        m_folder = std::filesystem::temp_directory_path() /
                   ("tavrino-history-" + std::to_string(seed()) + std::to_string(seed()));
        std::filesystem::create_directories(m_folder);
    }
    ~HistoryTest() override
    {
        history.reset();
        std::error_code ignored;
        std::filesystem::permissions(m_folder, std::filesystem::perms::owner_all, ignored);
        std::filesystem::remove_all(m_folder, ignored);
    }

    const std::filesystem::path &folder() const { return m_folder; }
    std::filesystem::path file() const { return m_folder / "Tavrino_History.db"; }

    // A new History on the folder, as at start-up, matched to the roster.
    History &open(const std::vector<std::string> &roster = {"Ann", "Bob", "Cy"},
                  const std::vector<std::string> &subjects = BuiltInSubjects)
    {
        history.reset();
        history = std::make_unique<History>(m_folder, clock);
        history->roster().matchRoster(roster);
        history->subjects().matchSubjects(subjects);
        return *history;
    }

    // A test of the student in the subject, with the given answers right or
    // wrong, a second and a half apart.
    void takeTest(int student, int subject, int level, const std::vector<bool> &rights,
                  bool practice = false)
    {
        HistoryRecorder &recorder = history->recorder();
        recorder.beginTest({student, subject, level, 30, practice});
        int right = 0;
        for (std::size_t i = 0; i < rights.size(); ++i) {
            clock.advance(1500);
            if (subject == 0) {
                const auto n = static_cast<std::int64_t>(i % 10);
                recorder.recordArithmetic(
                    {n, 3, n * 3, 2, 2, rights[i] ? std::to_string(n * 3) : "x", rights[i]});
            } else {
                recorder.recordChoice(
                    {"Q" + std::to_string(i), {"a", "b", "c", "d"}, 0, rights[i] ? 0 : 1});
            }
            right += rights[i];
        }
        const int wrong = static_cast<int>(rights.size()) - right;
        recorder.endTest({right - wrong, right, wrong, false});
    }

    // The CSV lines as the command line writes them, header and BOM dropped.
    std::vector<std::string> csvRows() const
    {
        std::ostringstream out;
        EXPECT_EQ(exportHistoryCsv(m_folder, out), std::nullopt);
        std::vector<std::string> rows;
        const std::string text = out.str();
        std::size_t at = text.find("\r\n");
        while (at != std::string::npos && at + 2 < text.size()) {
            const std::size_t end = text.find("\r\n", at + 2);
            rows.push_back(text.substr(at + 2, end - at - 2));
            at = end;
        }
        return rows;
    }

    ManualClock clock;
    std::unique_ptr<History> history;

private:
    std::filesystem::path m_folder;
};
