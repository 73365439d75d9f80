// For the tests of this library: a fresh directory removed with its contents at
// the end of a test, whole-file helpers that speak in bytes and hex, and banks.
#pragma once

#include "core/DefaultBank.h"

#include <gtest/gtest.h>

#include <cctype>
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
    const std::filesystem::path &path() const { return m_path; }

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
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

// "FD FF 00" for the bytes FD FF 00.
inline std::string Hex(const std::string &bytes)
{
    static const char digits[] = "0123456789ABCDEF";
    std::string text;
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        if (!text.empty()) {
            text += ' ';
        }
        text += digits[value >> 4];
        text += digits[value & 0x0F];
    }
    return text;
}

// The bytes of a hex text; spaces and line breaks are ignored.
inline std::string FromHex(const std::string &hex)
{
    std::string bytes;
    std::string pair;
    for (const char c : hex) {
        if (std::isxdigit(static_cast<unsigned char>(c))) {
            pair += c;
            if (pair.size() == 2) {
                bytes += static_cast<char>(std::stoi(pair, nullptr, 16));
                pair.clear();
            }
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

inline bool SameQuestion(const Question &a, const Question &b)
{
    return std::tie(a.Text, a.Answer, a.Wrong1, a.Wrong2, a.Wrong3) ==
           std::tie(b.Text, b.Answer, b.Wrong1, b.Wrong2, b.Wrong3);
}

// Every table of the two banks holds the same values.
inline void ExpectSameBank(const TestBank &a, const TestBank &b)
{
    ASSERT_EQ(a.SubjectMax, b.SubjectMax);
    ASSERT_EQ(a.QuestionMax, b.QuestionMax);
    ASSERT_EQ(a.Subjects.size(), b.Subjects.size());
    ASSERT_EQ(a.QuestionBank.size(), b.QuestionBank.size());
    ASSERT_EQ(a.Limits.size(), b.Limits.size());
    for (std::size_t s = 0; s < a.Subjects.size(); ++s) {
        EXPECT_EQ(a.Subjects[s].Name, b.Subjects[s].Name);
        EXPECT_EQ(a.Subjects[s].AdjacentLevels, b.Subjects[s].AdjacentLevels);
        EXPECT_EQ(a.Limits[s].LastQuestion, b.Limits[s].LastQuestion);
        EXPECT_EQ(a.Limits[s].Seconds, b.Limits[s].Seconds);
        for (int level = 0; level < LevelCount; ++level) {
            const std::vector<Question> &x = a.QuestionBank[s].Items()[level];
            const std::vector<Question> &y = b.QuestionBank[s].Items()[level];
            ASSERT_EQ(x.size(), y.size());
            for (std::size_t slot = 0; slot < x.size(); ++slot) {
                EXPECT_TRUE(SameQuestion(x[slot], y[slot]))
                    << "subject " << s << " level " << level << " slot " << slot;
            }
        }
    }
    EXPECT_EQ(a.ArithLow1, b.ArithLow1);
    EXPECT_EQ(a.ArithHigh1, b.ArithHigh1);
    EXPECT_EQ(a.ArithLow2, b.ArithLow2);
    EXPECT_EQ(a.ArithHigh2, b.ArithHigh2);
    EXPECT_EQ(a.ArithOps, b.ArithOps);
    EXPECT_EQ(a.ArithSwitch, b.ArithSwitch);
}
