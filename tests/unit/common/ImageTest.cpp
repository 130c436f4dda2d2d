#include "common/Image.h"

#include "platform/Bundle.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

namespace
{

using velq::Image;

void addFile(const QString &name)
{
    QFile file(QDir(velq::Bundle::mainBundle().resourcePath()).filePath(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
}

TEST(ImageTest, IsLookedUpInTheResourcesWithAllItsSizes)
{
    addFile(QStringLiteral("imageTestIcon_16.png"));
    addFile(QStringLiteral("imageTestIcon_32.png"));
    addFile(QStringLiteral("imageTestIconOther_16.png"));
    const auto image = Image::imageNamed(QStringLiteral("imageTestIcon"));
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(image->name(), QStringLiteral("imageTestIcon"));
    EXPECT_EQ(image->files().size(), 2);
}

TEST(ImageTest, IsSharedByNameWithItsTemplateMark)
{
    addFile(QStringLiteral("imageTestShared.png"));
    const auto image = Image::imageNamed(QStringLiteral("imageTestShared"));
    ASSERT_NE(image, nullptr);
    EXPECT_FALSE(image->isTemplate());
    image->setTemplate(true);
    EXPECT_EQ(Image::imageNamed(QStringLiteral("imageTestShared")), image);
    EXPECT_TRUE(Image::imageNamed(QStringLiteral("imageTestShared"))->isTemplate());
}

TEST(ImageTest, NoSuchImageIsNull)
{
    addFile(QStringLiteral("_16.png"));
    EXPECT_EQ(Image::imageNamed(QStringLiteral("noSuchImage")), nullptr);
    EXPECT_EQ(Image::imageNamed(QStringLiteral("")), nullptr);
    EXPECT_EQ(Image::imageNamed(QString()), nullptr);
}

} // namespace
