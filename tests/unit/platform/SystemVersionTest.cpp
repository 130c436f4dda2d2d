#include "platform/SystemVersion.h"

#include <gtest/gtest.h>

namespace
{

using velq::SystemVersion;

TEST(SystemVersionTest, ReadsThreeIntegers)
{
    EXPECT_EQ(SystemVersion::fromText(QStringLiteral("11.0.1")), (SystemVersion{11, 0, 1}));
}

TEST(SystemVersionTest, WhatIsMissingOrNoNumberIsZero)
{
    EXPECT_EQ(SystemVersion::fromText(QStringLiteral("12")), (SystemVersion{12, 0, 0}));
    EXPECT_EQ(SystemVersion::fromText(QStringLiteral("10.9")), (SystemVersion{10, 9, 0}));
    EXPECT_EQ(SystemVersion::fromText(QString()), (SystemVersion{0, 0, 0}));
    EXPECT_EQ(SystemVersion::fromText(QStringLiteral("rolling")), (SystemVersion{0, 0, 0}));
    EXPECT_EQ(SystemVersion::fromText(QStringLiteral("7..3")), (SystemVersion{7, 0, 3}));
}

TEST(SystemVersionTest, TheRunningSystemStatesItsOwn)
{
    EXPECT_GE(SystemVersion::current().majorVersion, 12);
}

} // namespace
