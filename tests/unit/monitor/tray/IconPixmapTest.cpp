#include "monitor/tray/IconPixmap.h"

#include <gtest/gtest.h>

namespace
{

using velq::IconPixmap;

TEST(IconPixmapTest, IsAlphaRedGreenBlueFromTheTop)
{
    QImage image(2, 2, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    image.setPixel(0, 0, qRgba(0x11, 0x22, 0x33, 0xff));
    image.setPixel(1, 1, qRgba(0xaa, 0xbb, 0xcc, 0x80));
    const IconPixmap pixmap = IconPixmap::fromImage(image);
    EXPECT_EQ(pixmap.width, 2);
    EXPECT_EQ(pixmap.height, 2);
    EXPECT_EQ(pixmap.bytes.toHex(),
              "ff112233"
              "00000000"
              "00000000"
              "80aabbcc");
}

TEST(IconPixmapTest, IsNotPremultiplied)
{
    QImage image(1, 1, QImage::Format_ARGB32_Premultiplied);
    image.fill(QColor(255, 0, 0, 128));
    EXPECT_EQ(IconPixmap::fromImage(image).bytes.toHex(), "80ff0000");
}

TEST(IconPixmapTest, NoImageIsAPixmapThatNothingIsSeenOf)
{
    const QList<IconPixmap> pixmaps = IconPixmap::fromImages({});
    ASSERT_EQ(pixmaps.size(), 1);
    EXPECT_EQ(pixmaps[0].bytes.size(), pixmaps[0].width * pixmaps[0].height * 4);
    EXPECT_EQ(pixmaps[0].bytes.count('\0'), pixmaps[0].bytes.size());
}

} // namespace
