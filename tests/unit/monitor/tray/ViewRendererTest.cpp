#include "monitor/tray/ViewRenderer.h"

#include "TestImages.h"
#include "monitor/StatusItem.h"

#include <QGuiApplication>
#include <QPalette>
#include <gtest/gtest.h>

namespace
{

using namespace velq;

class ViewRendererTest : public testing::Test
{
protected:
    QList<int> widths()
    {
        QList<int> result;
        for (const QImage &image : renderer.images(view))
            result.append(image.width());
        return result;
    }

    QColor middle(qsizetype index)
    {
        const QImage image = renderer.images(view).at(index);
        return image.pixelColor(image.width() / 2, image.height() / 2);
    }

    TestImages files;
    StatusItemView view;
    ViewRenderer renderer;
};

TEST_F(ViewRendererTest, AViewThatShowsNothingHasNoPixels)
{
    EXPECT_TRUE(renderer.images(view).isEmpty());
}

TEST_F(ViewRendererTest, HasEverySizeSmallestFirst)
{
    view.statusImage->setImage(files.make(QStringLiteral("green"), Qt::green, {48, 16, 22}));
    EXPECT_EQ(widths(), (QList<int>{16, 22, 48}));
    EXPECT_EQ(middle(1), QColor(Qt::green));
}

TEST_F(ViewRendererTest, TheStatusImageLiesAboveTheIcon)
{
    view.iconImage->setImage(files.make(QStringLiteral("blue"), Qt::blue, {16, 32}));
    EXPECT_EQ(middle(0), QColor(Qt::blue));
    view.statusImage->setImage(files.make(QStringLiteral("red"), Qt::red, {22}));
    EXPECT_EQ(widths(), (QList<int>{16, 32}));
    EXPECT_EQ(middle(0), QColor(Qt::red));
    EXPECT_EQ(middle(1), QColor(Qt::red));
}

TEST_F(ViewRendererTest, ATemplateIsDrawnInTheColourOfText)
{
    const auto image = files.make(QStringLiteral("normal"), Qt::black, {16});
    view.statusImage->setImage(image);
    const QColor text(12, 34, 56);
    QPalette palette = QGuiApplication::palette();
    palette.setColor(QPalette::WindowText, text);
    QGuiApplication::setPalette(palette);
    EXPECT_EQ(middle(0), QColor(Qt::black));
    image->setTemplate(true);
    EXPECT_EQ(middle(0), text);
}

TEST_F(ViewRendererTest, AFileThatIsNoPictureIsLeftOut)
{
    view.statusImage->setImage(
        std::make_shared<Image>(QStringLiteral("odd"), QStringList{QStringLiteral("/dev/null")}));
    EXPECT_TRUE(renderer.images(view).isEmpty());
}

} // namespace
