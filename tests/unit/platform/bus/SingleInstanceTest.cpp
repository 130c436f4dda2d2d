#include "platform/SingleInstance.h"

#include "SomebodyElse.h"
#include "support/Waiting.h"

#include <gtest/gtest.h>

namespace
{

using namespace velq;
using velq::testing::SomebodyElse;
using velq::testing::waitUntil;

const QString identifier = QStringLiteral("com.zelmor.SingleInstanceTest");

class SingleInstanceTest : public ::testing::Test
{
protected:
    bool othersGetTheName() { return somebodyElse.connection().registerService(identifier); }

    SomebodyElse somebodyElse;
};

TEST_F(SingleInstanceTest, WhoClaimsFirstHoldsItUntilItGoes)
{
    {
        SingleInstance instance;
        EXPECT_TRUE(instance.claim(identifier));
        EXPECT_FALSE(othersGetTheName());
    }
    EXPECT_TRUE(waitUntil([this] { return othersGetTheName(); }));
}

TEST_F(SingleInstanceTest, WhatAnotherProcessHoldsIsRefused)
{
    ASSERT_TRUE(othersGetTheName());
    EXPECT_FALSE(SingleInstance().claim(identifier));
    ASSERT_TRUE(somebodyElse.connection().unregisterService(identifier));
    EXPECT_TRUE(SingleInstance().claim(identifier));
}

TEST_F(SingleInstanceTest, ARefusalTakesNothingFromTheHolder)
{
    ASSERT_TRUE(othersGetTheName());
    EXPECT_FALSE(SingleInstance().claim(identifier));
    EXPECT_FALSE(SingleInstance().claim(identifier));
}

TEST_F(SingleInstanceTest, OtherIdentifiersAreFree)
{
    ASSERT_TRUE(othersGetTheName());
    EXPECT_TRUE(SingleInstance().claim(identifier + QStringLiteral(".Other")));
}

} // namespace
