#include "diagnosis/BinarySwith.h"

#include <gtest/gtest.h>

namespace
{

using velq::BinarySwith;

TEST(BinarySwithTest, ADigitHasItsValueInEitherCase)
{
    const QString digits = QStringLiteral("0123456789abcdef");
    for (int value = 0; value < 16; ++value) {
        const QString digit(digits[value]);
        EXPECT_EQ(BinarySwith::sexadecimalCharactor(digit), value);
        EXPECT_EQ(BinarySwith::sexadecimalCharactor(digit.toUpper()), value);
    }
}

TEST(BinarySwithTest, AnythingElseIsNothing)
{
    for (const char *text : {"g", "G", "", " ", "/", ":", "`", "ff", "10", "\n"})
        EXPECT_EQ(BinarySwith::sexadecimalCharactor(QString::fromLatin1(text)), 0) << text;
    EXPECT_EQ(BinarySwith::sexadecimalCharactor(QString()), 0);
    EXPECT_EQ(BinarySwith::sexadecimalCharactor(QStringLiteral("\uff11")), 0);
}

TEST(BinarySwithTest, EightDigitsAreAnAddress)
{
    const std::pair<const char *, const char *> masks[] = {
        {"ffffff00", "255.255.255.0"}, {"FFFFFF00", "255.255.255.0"},
        {"ffff0000", "255.255.0.0"},   {"fffffff8", "255.255.255.248"},
        {"00000000", "0.0.0.0"},       {"c0A80117", "192.168.1.23"},
        {"zzzzzzzz", "0.0.0.0"},       {"0xffffff", "0.255.255.255"}};
    for (const auto &[digits, dotted] : masks)
        EXPECT_EQ(BinarySwith::sexadecimalToIPv4(QString::fromLatin1(digits)),
                  QString::fromLatin1(dotted));
}

TEST(BinarySwithTest, AnotherNumberOfDigitsIsTheEmptyText)
{
    for (const char *digits : {"", "fffffff", "ffffff00f", "ffffff00ffffff00", "0xffffff00"}) {
        const QString dotted = BinarySwith::sexadecimalToIPv4(QString::fromLatin1(digits));
        EXPECT_EQ(dotted, QStringLiteral("")) << digits;
        EXPECT_FALSE(dotted.isNull());
    }
}

TEST(BinarySwithTest, AnyNumberOfPairsIsDecimalToo)
{
    const std::pair<const char *, const char *> numbers[] = {{"0xffffff00", "255.255.255.0"},
                                                             {"0xff0x10", "255.16"},
                                                             {"0a", "10"},
                                                             {"ffffff000102", "255.255.255.0.1.2"},
                                                             {"", ""}};
    for (const auto &[digits, dotted] : numbers)
        EXPECT_EQ(BinarySwith::sexadecimalToDecimal(QString::fromLatin1(digits)),
                  QString::fromLatin1(dotted));
}

TEST(BinarySwithTest, AMissingLastDigitIsNought)
{
    EXPECT_EQ(BinarySwith::sexadecimalToDecimal(QStringLiteral("fff")), QStringLiteral("255.240"));
    EXPECT_EQ(BinarySwith::sexadecimalToDecimal(QStringLiteral("0xa")), QStringLiteral("160"));
}

} // namespace
