#include "diagnosis/views/IPErrorView.h"

#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <gtest/gtest.h>

namespace
{

using velq::IPErrorView;

TEST(IPErrorViewTest, WithoutAServiceIsEmpty)
{
    const IPErrorView view{QString()};
    EXPECT_EQ(view.size(), QSize(492, 30));
    EXPECT_TRUE(view.findChildren<QWidget *>().isEmpty());
}

TEST(IPErrorViewTest, NamesTheServiceBehindThePicture)
{
    const IPErrorView view(QStringLiteral("Wi-Fi"));
    EXPECT_EQ(view.geometry(), QRect(0, 0, 492, 30));
    EXPECT_EQ(view.findChildren<QWidget *>(Qt::FindDirectChildrenOnly).size(), 2);
    const auto *const icon = view.findChild<QLabel *>();
    const auto *const label = view.findChild<QLineEdit *>();
    ASSERT_TRUE(icon != nullptr && label != nullptr);
    EXPECT_EQ(icon->geometry(), QRect(0, 9, 12, 12));
    EXPECT_EQ(label->geometry(), QRect(12, 6, 478, 18));
    EXPECT_EQ(label->text(), QStringLiteral("Wi-Fi"));
    EXPECT_TRUE(label->isReadOnly());
    EXPECT_FALSE(label->hasFrame());
    EXPECT_EQ(label->font().family(), QStringLiteral("Helvetica Neue"));
    EXPECT_EQ(label->font().pointSize(), 10);
}

TEST(IPErrorViewTest, AnEmptyNameIsStillAName)
{
    const IPErrorView view(QStringLiteral(""));
    EXPECT_EQ(view.findChildren<QWidget *>(Qt::FindDirectChildrenOnly).size(), 2);
}

// The picture is twice as wide as high.
TEST(IPErrorViewTest, ScalesThePictureOnBothAxes)
{
    IPErrorView view(QStringLiteral("Wi-Fi"));
    const QImage image = view.grab(QRect(0, 9, 12, 12)).toImage();
    for (const int y : {0, 6, 11}) {
        EXPECT_EQ(image.pixelColor(1, y), QColor(Qt::red)) << y;
        EXPECT_EQ(image.pixelColor(10, y), QColor(Qt::blue)) << y;
    }
}

} // namespace
