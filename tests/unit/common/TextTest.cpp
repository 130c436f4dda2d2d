#include "common/Text.h"

#include <gtest/gtest.h>

namespace
{

using namespace velq;

TEST(TextTest, NoBytesAreTheEmptyTextNotNone)
{
    EXPECT_FALSE(decodedUtf8("").isNull());
    EXPECT_TRUE(decodedUtf8("").isEmpty());
}

TEST(TextTest, NothingIsTrimmed)
{
    EXPECT_EQ(decodedUtf8(" a\n\n"), QStringLiteral(" a\n\n"));
}

TEST(TextTest, ValidUtf8IsDecoded)
{
    EXPECT_EQ(decodedUtf8("网络"), QStringLiteral("网络"));
    EXPECT_EQ(decodedUtf8(QByteArrayView("a\0b", 3)).size(), 3);
    EXPECT_EQ(decodedUtf8("\xef\xbb\xbf!").size(), 2);
}

TEST(TextTest, InvalidUtf8IsNothing)
{
    EXPECT_TRUE(decodedUtf8("a\xff").isNull());
    EXPECT_TRUE(decodedUtf8("cut \xe7\xbd").isNull());
    EXPECT_TRUE(decodedUtf8("\xed\xa0\x80").isNull());
    EXPECT_TRUE(decodedUtf8("\xc0\x80").isNull());
}

TEST(TextTest, AbsenceShowsAsNullInBrackets)
{
    EXPECT_EQ(shown(QString()), QStringLiteral("(null)"));
    EXPECT_EQ(shown(QStringLiteral("")), QStringLiteral(""));
    EXPECT_EQ(shown(QStringLiteral("x")), QStringLiteral("x"));
}

} // namespace
