#include "daemon/PlainText.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

using velq::daemon::escapedText;
using velq::daemon::validText;
using namespace std::string_literals;

const std::string mark = "\xEF\xBF\xBD";

TEST(ValidTextTest, GoodTextStaysAsItIs)
{
    for (const std::string &text : {""s, "a\nb\n"s, "\x01\x7f\t"s, "\u00e9\u7f51\U0001F600"s,
                                    "\u0080\u07ff\u0800\uffef"s, "\U00010000\U0010FFFD"s, mark})
        EXPECT_EQ(validText(text), text);
}

TEST(ValidTextTest, NothingAfterANulIsLost)
{
    EXPECT_EQ(validText("a\0b\0"s), "a" + mark + "b" + mark);
}

TEST(ValidTextTest, EachStrayByteIsMarked)
{
    EXPECT_EQ(validText("a\xff"
                        "b"),
              "a" + mark + "b");
    EXPECT_EQ(validText("\x80\xbf"), mark + mark);
    EXPECT_EQ(validText("\xc3("), mark + "(");
    EXPECT_EQ(validText("\xe7\xbd"), mark + mark);
    EXPECT_EQ(validText("\xf0\x9f\x98"), mark + mark + mark);
}

TEST(ValidTextTest, LongerFormsThanNeededAreNoText)
{
    EXPECT_EQ(validText("\xc0\x80"), mark + mark);
    EXPECT_EQ(validText("\xc1\xbf"), mark + mark);
    EXPECT_EQ(validText("\xe0\x80\xaf"), mark + mark + mark);
    EXPECT_EQ(validText("\xf0\x80\x80\xaf"), mark + mark + mark + mark);
}

TEST(ValidTextTest, SurrogatesNoncharactersAndWhatIsBeyondAreMarked)
{
    EXPECT_EQ(validText("\xed\xa0\x80"), mark);
    EXPECT_EQ(validText("\xed\xbf\xbf"), mark);
    EXPECT_EQ(validText("\xef\xbf\xbe\xef\xbf\xbf"), mark + mark);
    EXPECT_EQ(validText("\xef\xb7\x90\xef\xb7\xaf"), mark + mark);
    EXPECT_EQ(validText("\xf0\x9f\xbf\xbe\xf4\x8f\xbf\xbf"), mark + mark);
    EXPECT_EQ(validText("\xf4\x90\x80\x80"), mark);
    EXPECT_EQ(validText("\xf5\x80\x80\x80"), mark + mark + mark + mark);
}

TEST(EscapedTextTest, IsOneLineOfPrintableCharacters)
{
    EXPECT_EQ(escapedText("plain text", 100), "plain text");
    EXPECT_EQ(escapedText("a\nb\tc\\d", 100), "a\\nb\\tc\\\\d");
    EXPECT_EQ(escapedText("\x1b[31m\x7f\0"s, 100), "\\x1b[31m\\x7f\\x00");
    // Turns the direction of what follows; in one piece it would do so here, too.
    EXPECT_EQ(escapedText(std::string("\xe2\x80") + "\xae", 100), "\\xe2\\x80\\xae");
}

TEST(EscapedTextTest, IsCutBetweenEscapes)
{
    EXPECT_EQ(escapedText("abcdef", 3), "abc");
    EXPECT_EQ(escapedText("ab\x01", 5), "ab");
    EXPECT_EQ(escapedText("ab\x01", 6), "ab\\x01");
}

} // namespace
