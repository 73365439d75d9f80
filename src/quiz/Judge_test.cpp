// Judging an Arithmetic entry: each box is read for its leading number, and the
// equation those numbers make must hold exactly.
#include "Judge.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <string>

TEST(Judge, AnEntryIsRightWhenTheNumbersReadFromTheBoxesMakeTheEquationHold)
{
    // A box is read up to the first character that cannot continue a number:
    // blanks are skipped anywhere, a sign, digits, one point and an E or D
    // exponent are taken, and a box that starts with no number reads as 0.
    // The equation is compared exactly in double precision: 0.1 + 0.2 is not 0.3,
    // and beyond 2^53 1e20 + 1 is 1e20. A result that overflows to infinity is
    // not the number typed, and a division by zero (of any sign) is wrong.
    const char *const big = "99999999999999999999";
    const char *const huge = "1e308";
    const struct {
        const char *number1;
        char op;
        const char *number2, *answer;
        bool right;
    } cases[] = {
        {"12abc", '/', " 4", "3 ", true},   {"abc", '+', "", "0", true},
        {"\t\n 7", '-', "+3", "4", true},   {"-3", 'x', "--3", "0", true},
        {"1e3", '+', "2D2", "1200", true},  {"2.5E+2", '/', "1e", "250", true},
        {"1.5e-1", '+', "e5", ".15", true}, {".", '+', "3.", "3", true},
        {"1.2.3", '+', "0", "1.2", true},   {"1 2", '+', "- 1 . 5", "10.5", true},
        {"7x", '-', "0012", "-5", true},    {"1,5", '+', "4\r", "5", true},
        {"3", '+', "4", "8", false},        {"10", '-', "4", "6", true},
        {"4", '-', "10", "6", false},       {huge, '+', huge, huge, false},
        {"6", 'x', "7", "42", true},        {"6", '*', "7", "42", false},
        {"7", '/', "2", "3.5", true},       {huge, 'x', huge, huge, false},
        {"7", '/', "2", "3", false},        {"0.1", '+', "0.2", "0.3", false},
        {"-0", '+', "0", "0", true},        {"-1e308", '-', huge, "-1e308", false},
        {"0", '+', "0", "-0", true},        {"0", '/', "5", "0", true},
        {"0", '/', "0", "0", false},        {huge, '/', "1e-308", "1", false},
        {"5", '/', "-0", "0", false},       {"5", '/', "0", "1e999", false},
        {"5", '/', "abc", "0", false},      {big, '+', "1", big, true},
        {big, '/', big, "1", true},
    };
    for (const auto &c : cases)
        EXPECT_EQ(isRightArithmetic(c.number1, c.op, c.number2, c.answer), c.right)
            << '"' << c.number1 << "\" " << c.op << " \"" << c.number2 << "\" = \"" << c.answer
            << '"';
    // An exponent too large for any double still reads, as infinity or zero.
    EXPECT_TRUE(std::isinf(leadingNumber("1e999999999999")));
    EXPECT_EQ(leadingNumber("1e-999999999999"), 0.0);
}

TEST(Judge, ReadsAPointWhateverTheUsersLocale)
{
    const std::string previous = std::setlocale(LC_NUMERIC, nullptr);
    if (!std::setlocale(LC_NUMERIC, "de_DE.UTF-8") && !std::setlocale(LC_NUMERIC, "fr_FR.UTF-8"))
        GTEST_SKIP() << "no locale with a decimal comma is installed";
    const double values[] = {leadingNumber("2.5"), leadingNumber("2,5")};
    std::setlocale(LC_NUMERIC, previous.c_str());
    EXPECT_EQ(values[0], 2.5);
    EXPECT_EQ(values[1], 2.0);
}
