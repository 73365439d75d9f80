// For the tests of this library: a fresh directory removed with its contents at
// the end of a test, whole-file helpers that speak in bytes and hex, and sample
// banks and rosters with texts outside ASCII and values at their edges.
#pragma once

#include "core/DefaultBank.h"
#include "core/Students.h"

#include <gtest/gtest.h>

#include <cctype>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <tuple>
#include <vector>

class ScratchDir {
public:
    ScratchDir()
    {
        std::random_device seed;
        m_path = std::filesystem::temp_directory_path() /
                 ("tavrino-core-" + std::to_string(seed()) + std::to_string(seed()));
        std::filesystem::create_directories(m_path);
    }
    ~ScratchDir()
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    ScratchDir(const ScratchDir &) = delete;
    ScratchDir &operator=(const ScratchDir &) = delete;

    const std::filesystem::path &path() const { return m_path; }
    std::filesystem::path operator/(const std::string &name) const { return m_path / name; }

    // Names of everything in the directory, to catch leftover temporary files.
    std::vector<std::string> entries() const
    {
        std::vector<std::string> names;
        for (const auto &entry : std::filesystem::directory_iterator(m_path)) {
            names.push_back(entry.path().filename().string());
        }
        return names;
    }

private:
    std::filesystem::path m_path;
};

inline std::string readBytes(const std::filesystem::path &path)
{
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

inline void writeBytes(const std::filesystem::path &path, const std::string &bytes)
{
    // A fresh file rather than a truncated one: ext4 flushes a truncated file to
    // disk on close, which makes thousands of rewrites take a minute.
    std::filesystem::remove(path);
    std::ofstream(path, std::ios::binary).write(bytes.data(), std::streamsize(bytes.size()));
}

// "FD FF 00" for the bytes FD FF 00.
inline std::string hex(const std::string &bytes)
{
    std::string text;
    for (const char byte : bytes) {
        char pair[4];
        std::snprintf(pair, sizeof pair, " %02X", static_cast<unsigned char>(byte));
        text += pair;
    }
    return text.empty() ? text : text.substr(1);
}

// The bytes of a hex text; spaces are ignored.
inline std::string fromHex(const std::string &hex)
{
    std::string bytes;
    for (std::size_t i = 0; i < hex.size(); ++i) {
        if (std::isxdigit(static_cast<unsigned char>(hex[i]))) {
            bytes += static_cast<char>(std::stoi(hex.substr(i++, 2), nullptr, 16));
        }
    }
    return bytes;
}

inline TestBank defaultTestBank()
{
    TestBank bank;
    buildDefaultTests(bank);
    return bank;
}

// Two added subjects, 21 slots, texts outside ASCII and values in every odd corner.
inline TestBank grownBank()
{
    TestBank bank = defaultTestBank();
    for (const char *name : {"Zo\u00EB", "\u00C5ngstr\u00F6m \u20AC"}) {
        addSubject(bank, name);
        bank.limits.back().seconds = 999;
    }
    resizeQuestionSlots(bank, 20);
    bank.questionBank[6].items()[0][20] = {"Caf\u00E9?", "\u00BD", "\u00BE", "", "x"};
    bank.limits[6].lastQuestion[0] = 20;
    bank.limits[7].seconds = 5;
    bank.subjects[7].adjacentLevels = true;
    bank.arithLow1[30][3] = -7;
    bank.arithHigh2[13][0] = 2147483647;
    bank.arithOps[12] = "";
    bank.arithSwitch[12][SwitchBlanks] = true;
    return bank;
}

// Five students with results for subjects 0..subjectMax: names outside ASCII, one
// with blanks around it, one empty, and scores at both ends of their range.
inline StudentRecords sampleRoster(int32_t subjectMax)
{
    StudentRecords records;
    records.showByStudent = false;
    records.currentSubject = 4;
    for (const char *name : {"Zo\u00EB", " \u00C5ngstr\u00F6m ", "", "\u20AC\u2122", "Ann"}) {
        records.students.push_back(newStudent(subjectMax));
        records.students.back().name = name;
    }
    records.students[1].level = 12;
    records.students[3].current = true;
    records.students[2].results[subjectMax].high[12] = 32767;
    records.students[4].results[0].last[0] = -32768;
    records.students[0].results[3].last[7] = -3;
    return records;
}

// Every table of the two banks holds the same values.
inline void expectSameBank(const TestBank &a, const TestBank &b)
{
    ASSERT_EQ(std::tie(a.subjectMax, a.questionMax), std::tie(b.subjectMax, b.questionMax));
    ASSERT_EQ(a.subjects.size(), b.subjects.size());
    ASSERT_EQ(a.questionBank.size(), b.questionBank.size());
    ASSERT_EQ(a.limits.size(), b.limits.size());
    const auto key = [](const Question &q) {
        return std::tie(q.text, q.answer, q.wrong1, q.wrong2, q.wrong3);
    };
    for (std::size_t s = 0; s < a.subjects.size(); ++s) {
        EXPECT_EQ(a.subjects[s].name, b.subjects[s].name);
        EXPECT_EQ(a.subjects[s].adjacentLevels, b.subjects[s].adjacentLevels);
        EXPECT_EQ(a.limits[s].lastQuestion, b.limits[s].lastQuestion);
        EXPECT_EQ(a.limits[s].seconds, b.limits[s].seconds);
        for (int level = 0; level < LevelCount; ++level) {
            const LevelSlots &x = a.questionBank[s].items()[level];
            const LevelSlots &y = b.questionBank[s].items()[level];
            ASSERT_EQ(x.size(), y.size());
            for (std::size_t slot = 0; slot < x.size(); ++slot) {
                EXPECT_EQ(key(x[slot]), key(y[slot]))
                    << "subject " << s << " level " << level << " slot " << slot;
            }
        }
    }
    EXPECT_EQ(std::tie(a.arithLow1, a.arithHigh1, a.arithLow2, a.arithHigh2),
              std::tie(b.arithLow1, b.arithHigh1, b.arithLow2, b.arithHigh2));
    EXPECT_EQ(a.arithOps, b.arithOps);
    EXPECT_EQ(a.arithSwitch, b.arithSwitch);
}

// The same roster with the same results, kept extra results too; the subject's
// name is left to the callers.
inline void expectSameRecords(const StudentRecords &a, const StudentRecords &b)
{
    EXPECT_EQ(std::tie(a.showByStudent, a.currentSubject),
              std::tie(b.showByStudent, b.currentSubject));
    ASSERT_EQ(a.students.size(), b.students.size());
    for (std::size_t i = 0; i < a.students.size(); ++i) {
        const Student &x = a.students[i];
        const Student &y = b.students[i];
        EXPECT_EQ(std::tie(x.name, x.level, x.current), std::tie(y.name, y.level, y.current));
        ASSERT_EQ(x.results.size(), y.results.size()) << "student " << i;
        ASSERT_EQ(x.extraResults.size(), y.extraResults.size()) << "student " << i;
        for (std::size_t s = 0; s < x.results.size() + x.extraResults.size(); ++s) {
            const bool extra = s >= x.results.size();
            const SubjectResults &p = extra ? x.extraResults[s - x.results.size()] : x.results[s];
            const SubjectResults &q = extra ? y.extraResults[s - y.results.size()] : y.results[s];
            EXPECT_EQ(p.last, q.last) << "student " << i << " subject " << s;
            EXPECT_EQ(p.high, q.high) << "student " << i << " subject " << s;
        }
    }
}
