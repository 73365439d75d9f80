#include "Judge.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <string>
#include <utility>

TEST(LeadingNumber, ReadsTheNumberAtTheStartOfTheText)
{
    const std::pair<const char *, double> cases[] = {
        {"12abc", 12}, {"abc", 0},  {"", 0},       {" 7", 7},    {"\t\n 7", 7},     {"-3", -3},
        {"+3", 3},     {"--3", 0},  {"1e3", 1000}, {"2D2", 200}, {"1.5e-1", .15},   {"2.5E+2", 250},
        {".", 0},      {".5", 0.5}, {"3.", 3},     {"1 2", 12},  {"- 1 . 5", -1.5}, {"1.2.3", 1.2},
        {"1e", 1},     {"7x", 7},   {"e5", 0},     {"0012", 12}, {"1,5", 1},        {"4\r", 4},
    };
    for (const auto &[text, expected] : cases) {
        EXPECT_DOUBLE_EQ(leadingNumber(text), expected) << '"' << text << '"';
    }
    EXPECT_TRUE(std::isinf(leadingNumber("1e999999999999")));
    EXPECT_EQ(leadingNumber("1e-999999999999"), 0.0);
}

TEST(LeadingNumber, ReadsAPointWhateverTheUsersLocale)
{
    const std::string previous = std::setlocale(LC_NUMERIC, nullptr);
    if (!std::setlocale(LC_NUMERIC, "de_DE.UTF-8") && !std::setlocale(LC_NUMERIC, "fr_FR.UTF-8"))
        GTEST_SKIP() << "no locale with a decimal comma is installed";
    const double values[] = {leadingNumber("2.5"), leadingNumber("2,5")};
    std::setlocale(LC_NUMERIC, previous.c_str());
    EXPECT_EQ(values[0], 2.5);
    EXPECT_EQ(values[1], 2.0);
}

TEST(IsRightArithmetic, AnyEntryThatMakesTheEquationTrueIsRightAndDividingByZeroIsWrong)
{
    // Compared exactly in double precision, as typed: 0.1 + 0.2 is not 0.3, and
    // beyond 2^53 1e20 + 1 is 1e20. A result that overflows to infinity equals no
    // number typed, and a division by zero (of any sign) is wrong.
    const char *const big = "99999999999999999999";
    const char *const huge = "1e308";
    const struct {
        const char *number1;
        char op;
        const char *number2, *answer;
        bool right;
    } cases[] = {
        {"3", '+', "4", "7", true},        {"3", '+', "4", "8", false},
        {"10", '-', "4", "6", true},       {"4", '-', "10", "6", false},
        {"6", 'x', "7", "42", true},       {"6", '*', "7", "42", false},
        {"7", '/', "2", "3.5", true},      {"7", '/', "2", "3", false},
        {"12abc", '/', " 4", "3 ", true},  {"abc", '+', "", "0", true},
        {"0.1", '+', "0.2", "0.3", false}, {"-0", '+', "0", "0", true},
        {"0", '+', "0", "-0", true},       {"0", '/', "5", "0", true},
        {"0", '/', "0", "0", false},       {"5", '/', "0", "0", false},
        {"5", '/', "-0", "0", false},      {"5", '/', "0", "1e999", false},
        {"5", '/', "abc", "0", false},     {huge, '+', huge, huge, false},
        {huge, 'x', huge, huge, false},    {"-1e308", '-', huge, "-1e308", false},
        {huge, '/', "1e-308", "1", false}, {big, '+', "1", big, true},
        {big, '/', big, "1", true},
    };
    for (const auto &c : cases)
        EXPECT_EQ(isRightArithmetic(c.number1, c.op, c.number2, c.answer), c.right)
            << c.number1 << ' ' << c.op << ' ' << c.number2 << " = " << c.answer;
}
