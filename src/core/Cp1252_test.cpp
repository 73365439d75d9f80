#include "core/Cp1252.h"

#include "core/CoreFixtures_test.h"

#include <gtest/gtest.h>

TEST(Cp1252, EveryByteSurvivesTheWayThroughUtf8)
{
    std::string all;
    for (int byte = 0; byte < 256; ++byte) {
        all += static_cast<char>(byte);
    }
    const std::string text = cp1252ToUtf8(all);
    EXPECT_EQ(utf8ToCp1252(text), all);

    EXPECT_EQ(cp1252ToUtf8("\x80"), "\u20AC");
    EXPECT_EQ(cp1252ToUtf8("\x9F"), "\u0178");
    EXPECT_EQ(cp1252ToUtf8("\xE9"), "\u00E9");
    // Undefined in the code page, kept as the control character of the same number.
    EXPECT_EQ(cp1252ToUtf8("\x81\x8D\x8F\x90\x9D"), "\u0081\u008D\u008F\u0090\u009D");
}

TEST(Cp1252, Utf8BecomesOneBytePerCharacterOrAQuestionMark)
{
    EXPECT_EQ(hex(utf8ToCp1252("Zo\u00EB")), "5A 6F EB");
    EXPECT_EQ(hex(utf8ToCp1252("\u00C5ngstr\u00F6m")), "C5 6E 67 73 74 72 F6 6D");
    EXPECT_EQ(hex(utf8ToCp1252("\u20AC")), "80");
    EXPECT_EQ(hex(utf8ToCp1252("\u201Cquoted\u201D \u2013 \u0152")),
              hex("\x93quoted\x94 \x96 \x8C"));
    EXPECT_EQ(hex(utf8ToCp1252("\u2018\u2019\u201E\u2122\u0178\u00FF")), "91 92 84 99 9F FF");

    // What the code page cannot hold, and what is not UTF-8, becomes a question mark.
    EXPECT_EQ(utf8ToCp1252("A\U0001F600B"), "A?B");   // emoji, four bytes
    EXPECT_EQ(utf8ToCp1252("\u4E2D\u6587"), "??");    // CJK
    EXPECT_EQ(utf8ToCp1252("\u0080"), "?");           // a C1 control the page lacks
    EXPECT_EQ(utf8ToCp1252("x\xC3("), "x?(");         // lead byte without continuation
    EXPECT_EQ(utf8ToCp1252("\xC0\xAF"), "?");         // overlong "/"
    EXPECT_EQ(utf8ToCp1252("\xED\xA0\x80"), "?");     // surrogate half
    EXPECT_EQ(utf8ToCp1252("\xF4\x90\x80\x80"), "?"); // beyond U+10FFFF
    EXPECT_EQ(utf8ToCp1252("ab\xE2\x82"), "ab?");     // cut short at the end
    EXPECT_EQ(utf8ToCp1252("\x80\x80z"), "?z");       // stray continuation bytes
}
