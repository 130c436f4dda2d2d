#include "cli/Json.h"

#include <gtest/gtest.h>

namespace
{

using velq::cli::jsonOf;

TEST(Json, AnAbsentTextIsNullAndAnEmptyOneIsNot)
{
    EXPECT_TRUE(jsonOf(QString()).isNull());
    EXPECT_TRUE(jsonOf(QStringLiteral("")).isString());
    EXPECT_EQ(jsonOf(QStringLiteral("")).toString(QStringLiteral("other")), QString());
    EXPECT_EQ(jsonOf(QStringLiteral("lan0")).toString(), QStringLiteral("lan0"));
}

} // namespace
