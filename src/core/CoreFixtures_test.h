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

inline std::string ReadBytes(const std::filesystem::path &path)
{
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

inline void WriteBytes(const std::filesystem::path &path, const std::string &bytes)
{
    // A fresh file rather than a truncated one: ext4 flushes a truncated file to
    // disk on close, which makes thousands of rewrites take a minute.
    std::filesystem::remove(path);
    std::ofstream(path, std::ios::binary).write(bytes.data(), std::streamsize(bytes.size()));
}

// "FD FF 00" for the bytes FD FF 00.
inline std::string Hex(const std::string &bytes)
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
inline std::string FromHex(const std::string &hex)
{
    std::string bytes;
    for (std::size_t i = 0; i < hex.size(); ++i) {
        if (std::isxdigit(static_cast<unsigned char>(hex[i]))) {
            bytes += static_cast<char>(std::stoi(hex.substr(i++, 2), nullptr, 16));
        }
    }
    return bytes;
}

inline TestBank DefaultTestBank()
{
    TestBank bank;
    BuildDefaultTests(bank);
    return bank;
}

// Two added subjects, 21 slots, texts outside ASCII and values in every odd corner.
inline TestBank GrownBank()
{
    TestBank bank = DefaultTestBank();
    for (const char *name : {"Zo\u00EB", "\u00C5ngstr\u00F6m \u20AC"}) {
        AddSubject(bank, name);
        bank.Limits.back().Seconds = 999;
    }
    ResizeQuestionSlots(bank, 20);
    bank.QuestionBank[6].Items()[0][20] = {"Caf\u00E9?", "\u00BD", "\u00BE", "", "x"};
    bank.Limits[6].LastQuestion[0] = 20;
    bank.Limits[7].Seconds = 5;
    bank.Subjects[7].AdjacentLevels = true;
    bank.ArithLow1[30][3] = -7;
    bank.ArithHigh2[13][0] = 2147483647;
    bank.ArithOps[12] = "";
    bank.ArithSwitch[12][SwitchBlanks] = true;
    return bank;
}

// Five students with results for subjects 0..subjectMax: names outside ASCII, one
// with blanks around it, one empty, and scores at both ends of their range.
inline StudentRecords Roster(int32_t subjectMax)
{
    StudentRecords records;
    records.ShowByStudent = false;
    records.CurrentSubject = 4;
    for (const char *name : {"Zo\u00EB", " \u00C5ngstr\u00F6m ", "", "\u20AC\u2122", "Ann"}) {
        records.Students.push_back(NewStudent(subjectMax));
        records.Students.back().Name = name;
    }
    records.Students[1].Level = 12;
    records.Students[3].Current = true;
    records.Students[2].Results[subjectMax].High[12] = 32767;
    records.Students[4].Results[0].Last[0] = -32768;
    records.Students[0].Results[3].Last[7] = -3;
    return records;
}

// Every table of the two banks holds the same values.
inline void ExpectSameBank(const TestBank &a, const TestBank &b)
{
    ASSERT_EQ(std::tie(a.SubjectMax, a.QuestionMax), std::tie(b.SubjectMax, b.QuestionMax));
    ASSERT_EQ(a.Subjects.size(), b.Subjects.size());
    ASSERT_EQ(a.QuestionBank.size(), b.QuestionBank.size());
    ASSERT_EQ(a.Limits.size(), b.Limits.size());
    const auto key = [](const Question &q) {
        return std::tie(q.Text, q.Answer, q.Wrong1, q.Wrong2, q.Wrong3);
    };
    for (std::size_t s = 0; s < a.Subjects.size(); ++s) {
        EXPECT_EQ(a.Subjects[s].Name, b.Subjects[s].Name);
        EXPECT_EQ(a.Subjects[s].AdjacentLevels, b.Subjects[s].AdjacentLevels);
        EXPECT_EQ(a.Limits[s].LastQuestion, b.Limits[s].LastQuestion);
        EXPECT_EQ(a.Limits[s].Seconds, b.Limits[s].Seconds);
        for (int level = 0; level < LevelCount; ++level) {
            const LevelSlots &x = a.QuestionBank[s].Items()[level];
            const LevelSlots &y = b.QuestionBank[s].Items()[level];
            ASSERT_EQ(x.size(), y.size());
            for (std::size_t slot = 0; slot < x.size(); ++slot) {
                EXPECT_EQ(key(x[slot]), key(y[slot]))
                    << "subject " << s << " level " << level << " slot " << slot;
            }
        }
    }
    EXPECT_EQ(std::tie(a.ArithLow1, a.ArithHigh1, a.ArithLow2, a.ArithHigh2),
              std::tie(b.ArithLow1, b.ArithHigh1, b.ArithLow2, b.ArithHigh2));
    EXPECT_EQ(a.ArithOps, b.ArithOps);
    EXPECT_EQ(a.ArithSwitch, b.ArithSwitch);
}

// The same roster with the same results; the subject's name is left to the callers.
inline void ExpectSameRecords(const StudentRecords &a, const StudentRecords &b)
{
    EXPECT_EQ(std::tie(a.ShowByStudent, a.CurrentSubject),
              std::tie(b.ShowByStudent, b.CurrentSubject));
    ASSERT_EQ(a.Students.size(), b.Students.size());
    for (std::size_t i = 0; i < a.Students.size(); ++i) {
        const Student &x = a.Students[i];
        const Student &y = b.Students[i];
        EXPECT_EQ(std::tie(x.Name, x.Level, x.Current), std::tie(y.Name, y.Level, y.Current));
        ASSERT_EQ(x.Results.size(), y.Results.size()) << "student " << i;
        for (std::size_t s = 0; s < x.Results.size(); ++s) {
            EXPECT_EQ(x.Results[s].Last, y.Results[s].Last) << "student " << i << " subject " << s;
            EXPECT_EQ(x.Results[s].High, y.Results[s].High) << "student " << i << " subject " << s;
        }
    }
}
