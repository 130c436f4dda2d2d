#include "common/views/TextBounds.h"

#include <QFile>
#include <QFont>
#include <QFontDatabase>
#include <QFontMetricsF>
#include <QtEndian>
#include <gtest/gtest.h>

#include <limits>

namespace
{

using velq::boundingRectOfText;

constexpr float unlimited = std::numeric_limits<float>::max();

class TextBoundsTest : public ::testing::Test
{
protected:
    QFont font{QStringLiteral("DejaVu Sans"), 12};
    QFontMetricsF metrics{font};
    qreal lineHeight = metrics.height() + metrics.leading();
};

// DejaVu Sans under another name, with a leading, which it has none of: 1,000 of 2,048 units.
QByteArray leadedFont()
{
    QFile file(QStringLiteral("/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf"));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QByteArray data = file.readAll();
    data.replace(QByteArrayLiteral("\0D\0e\0j\0a\0V\0u"), QByteArrayLiteral("\0L\0e\0a\0d\0e\0d"));
    data.replace("DejaVu", "Leaded");
    constexpr qsizetype offsetInEntry = 8;
    constexpr qsizetype gapInTable = 8;
    const char *const entry = data.constData() + data.indexOf("hhea");
    const auto table = qFromBigEndian<quint32>(entry + offsetInEntry);
    qToBigEndian<qint16>(1000, data.data() + table + gapInTable);
    return data;
}

TEST_F(TextBoundsTest, TheLeadingCounts)
{
    const int id = QFontDatabase::addApplicationFontFromData(leadedFont());
    ASSERT_EQ(QFontDatabase::applicationFontFamilies(id),
              QStringList{QStringLiteral("Leaded Sans")});
    const QFont leaded(QStringLiteral("Leaded Sans"), 100);
    const QFontMetricsF leadedMetrics(leaded);
    ASSERT_GT(leadedMetrics.leading(), 50);
    const QRectF bounds = boundingRectOfText(QStringLiteral("one\ntwo"), leaded, unlimited);
    EXPECT_NEAR(bounds.height(), 2 * (leadedMetrics.height() + leadedMetrics.leading()), 2);
    QFontDatabase::removeApplicationFont(id);
}

TEST_F(TextBoundsTest, TheNullTextTakesNoPlace)
{
    EXPECT_EQ(boundingRectOfText(QString(), font, 100), QRectF(0, 0, 0, 0));
}

TEST_F(TextBoundsTest, TheEmptyTextIsALineWithoutWidth)
{
    const QRectF bounds = boundingRectOfText(QStringLiteral(""), font, 100);
    EXPECT_EQ(bounds.width(), 0);
    EXPECT_NEAR(bounds.height(), lineHeight, 1);
}

TEST_F(TextBoundsTest, OneLineIsAsWideAsTheFontSays)
{
    const auto text = QStringLiteral("Network care");
    const QRectF bounds = boundingRectOfText(text, font, unlimited);
    EXPECT_EQ(bounds.topLeft(), QPointF(0, 0));
    EXPECT_NEAR(bounds.width(), metrics.horizontalAdvance(text), 1);
    EXPECT_NEAR(bounds.height(), lineHeight, 1);
}

TEST_F(TextBoundsTest, ALargerFontTakesMorePlace)
{
    const auto text = QStringLiteral("Network care");
    const QFont larger(font.family(), 24);
    const QRectF small = boundingRectOfText(text, font, unlimited);
    const QRectF large = boundingRectOfText(text, larger, unlimited);
    EXPECT_NEAR(large.width(), 2 * small.width(), 3);
    EXPECT_NEAR(large.height(), 2 * small.height(), 3);
}

TEST_F(TextBoundsTest, LongTextsAreWrappedAtWords)
{
    const auto width = static_cast<float>(metrics.horizontalAdvance(QStringLiteral("one two ")));
    const QRectF bounds = boundingRectOfText(QStringLiteral("one two one two"), font, width);
    EXPECT_NEAR(bounds.height(), 2 * lineHeight, 1);
    EXPECT_NEAR(bounds.width(), metrics.horizontalAdvance(QStringLiteral("one two")), 1);
}

TEST_F(TextBoundsTest, AWordThatIsTooWideIsBroken)
{
    const auto width = static_cast<float>(metrics.horizontalAdvance(QStringLiteral("MMMM"))) + 1;
    const QRectF bounds = boundingRectOfText(QStringLiteral("MMMMMMMM"), font, width);
    EXPECT_NEAR(bounds.height(), 2 * lineHeight, 1);
    EXPECT_LE(bounds.width(), width);
}

TEST_F(TextBoundsTest, LineFeedsEndLines)
{
    for (const char *text : {"a\nbb\nc", "a\r\nbb\r\nc", "a\rbb\rc"}) {
        const QRectF bounds = boundingRectOfText(QString::fromLatin1(text), font, unlimited);
        EXPECT_NEAR(bounds.height(), 3 * lineHeight, 2) << text;
        EXPECT_NEAR(bounds.width(), metrics.horizontalAdvance(QStringLiteral("bb")), 1) << text;
    }
}

TEST_F(TextBoundsTest, NoWidthWrapsNothing)
{
    const auto text = QStringLiteral("one two one two");
    const QRectF whole = boundingRectOfText(text, font, unlimited);
    EXPECT_EQ(boundingRectOfText(text, font, 0), whole);
    EXPECT_EQ(boundingRectOfText(text, font, -1), whole);
}

} // namespace
