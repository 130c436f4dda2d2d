#include "common/CommonFunction.h"
#include "common/views/TextBounds.h"

#include <QFont>
#include <gtest/gtest.h>

#include <limits>

namespace
{

using velq::CommonFunction;

const QString text = QStringLiteral("Network care for everybody");

TEST(CommonFunctionTextTest, IsTheRectangleOfTheText)
{
    const QFont font(QStringLiteral("DejaVu Sans"), 12);
    for (const float width : {50.0F, 100.0F, std::numeric_limits<float>::max()}) {
        const QRectF bounds = CommonFunction::stringRect(text, font, width);
        EXPECT_EQ(bounds, velq::boundingRectOfText(text, font, width));
        EXPECT_GT(bounds.height(), 0);
        EXPECT_EQ(CommonFunction::stringWidth(text, font, width),
                  static_cast<float>(bounds.width()));
    }
}

TEST(CommonFunctionTextTest, TheNullTextHasNone)
{
    const QFont font;
    EXPECT_EQ(CommonFunction::stringRect(QString(), font, 100), QRectF(0, 0, 0, 0));
    EXPECT_EQ(CommonFunction::stringWidth(QString(), font, 100), 0);
}

} // namespace
