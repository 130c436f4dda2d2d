#include "PlainView.h"
#include "common/views/NSView_BackgroudColor.h"
#include "support/Waiting.h"

#include <QPaintEvent>
#include <QPlainTextEdit>
#include <QRegion>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace
{

using namespace velq;
using velq::testing::settle;

constexpr QSize size(40, 30);
constexpr int area = 40 * 30;

class FillTest : public ::testing::Test
{
protected:
    FillTest() { view.resize(size); }

    PlainView view{Qt::white};
};

// Tells what is drawn of it, and may draw another widget meanwhile.
class Reporting : public PlainView
{
public:
    using PlainView::PlainView;

    QList<QRect> rects;
    PlainView *other = nullptr;
    QImage otherDrawn;

protected:
    void paintEvent(QPaintEvent *event) override
    {
        rects.append(event->rect());
        PlainView::paintEvent(event);
        if (other != nullptr)
            otherDrawn = other->drawn();
    }
};

// Counts the paint events that it is shown.
class Counter : public QObject
{
public:
    using QObject::QObject;

    int paints = 0;

    bool eventFilter(QObject *, QEvent *event) override
    {
        paints += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
};

int difference(QRgb one, QRgb other)
{
    return std::max({std::abs(qRed(one) - qRed(other)), std::abs(qGreen(one) - qGreen(other)),
                     std::abs(qBlue(one) - qBlue(other))});
}

TEST_F(FillTest, CoversWhatTheViewDraws)
{
    setBackgroundColor(view, Qt::red);
    EXPECT_EQ(getBackgroundColor(view), QColor(Qt::red));
    EXPECT_EQ(count(view.drawn(), Qt::red), area);
}

TEST_F(FillTest, NoColourRemovesIt)
{
    setBackgroundColor(view, Qt::red);
    setBackgroundColor(view, {});
    EXPECT_FALSE(getBackgroundColor(view).isValid());
    EXPECT_EQ(count(view.drawn(), Qt::white), area);
}

TEST_F(FillTest, TheValuesGoWithTheViewAsItsProperties)
{
    const QGradientStops gradient{{0, Qt::black}, {1, Qt::white}};
    setBackgroundColor(view, Qt::red);
    setGradientColor(view, gradient);
    EXPECT_EQ(view.property("backgroundColor").value<QColor>(), QColor(Qt::red));
    EXPECT_EQ(view.property("gradientColor").value<QGradientStops>(), gradient);
    setBackgroundColor(view, {});
    setGradientColor(view, {});
    EXPECT_FALSE(view.property("backgroundColor").isValid());
    EXPECT_FALSE(view.property("gradientColor").isValid());
}

TEST_F(FillTest, OtherViewsStayAsTheyAre)
{
    setBackgroundColor(view, Qt::red);
    PlainView other(Qt::blue);
    other.resize(size);
    EXPECT_FALSE(getBackgroundColor(other).isValid());
    EXPECT_TRUE(getGradientColor(other).isEmpty());
    EXPECT_EQ(count(other.drawn(), Qt::blue), area);
}

TEST_F(FillTest, ChildrenStayVisibleAndUnfilled)
{
    auto *const child = new PlainView(Qt::blue, &view);
    child->setGeometry(5, 5, 10, 10);
    setBackgroundColor(view, Qt::red);
    const QImage image = view.drawn();
    EXPECT_EQ(count(image, Qt::blue), 100);
    EXPECT_EQ(count(image, Qt::red), area - 100);
    EXPECT_EQ(image.pixel(5, 5), QColor(Qt::blue).rgba());
    EXPECT_EQ(image.pixel(14, 14), QColor(Qt::blue).rgba());
}

TEST_F(FillTest, AChildIsFilledWithinItsBounds)
{
    auto *const child = new PlainView(Qt::blue, &view);
    child->setGeometry(5, 5, 10, 10);
    setBackgroundColor(*child, Qt::green);
    const QImage image = view.drawn();
    EXPECT_EQ(count(image, Qt::green), 100);
    EXPECT_EQ(count(image, Qt::white), area - 100);
}

TEST_F(FillTest, ATranslucentColourTakesThePlaceOfWhatWasThere)
{
    view.setAttribute(Qt::WA_TranslucentBackground);
    setBackgroundColor(view, QColor(255, 0, 0, 51));
    const QRgb pixel = view.drawn().pixel(3, 3);
    EXPECT_EQ(qAlpha(pixel), 51);
    EXPECT_EQ(qRed(pixel), 255);
    EXPECT_EQ(qGreen(pixel), 0);
}

TEST_F(FillTest, TheGradientRunsFromTheTopToTheBottomAboveTheFill)
{
    setBackgroundColor(view, Qt::red);
    setGradientColor(view, {{0, Qt::black}, {1, Qt::white}});
    const QImage image = view.drawn();
    for (int y = 0; y < size.height(); ++y) {
        const int grey = static_cast<int>(std::lround(255 * (y + 0.5) / size.height()));
        for (int x = 0; x < size.width(); ++x)
            ASSERT_LE(difference(image.pixel(x, y), qRgb(grey, grey, grey)), 2) << x << ' ' << y;
    }
}

TEST_F(FillTest, ATranslucentGradientLetsTheFillThrough)
{
    setBackgroundColor(view, Qt::red);
    setGradientColor(view, {{0, QColor(0, 0, 255, 0)}, {1, QColor(0, 0, 255, 0)}});
    EXPECT_EQ(count(view.drawn(), Qt::red), area);
}

TEST_F(FillTest, NoStopsRemoveTheGradient)
{
    setBackgroundColor(view, Qt::red);
    setGradientColor(view, {{0, Qt::black}, {1, Qt::white}});
    setGradientColor(view, {});
    EXPECT_EQ(count(view.drawn(), Qt::red), area);
}

TEST_F(FillTest, TheGradientSpansTheViewWhateverPartIsDrawn)
{
    setBackgroundColor(view, Qt::red);
    setGradientColor(view, {{0, Qt::black}, {1, Qt::white}});
    const QRect part(10, 20, 5, 5);
    QImage image(size, QImage::Format_ARGB32);
    image.fill(Qt::blue);
    view.render(&image, part.topLeft(), part, QWidget::DrawWindowBackground);
    EXPECT_EQ(count(image, Qt::blue), area - 25);
    const int grey = static_cast<int>(std::lround(255 * 20.5 / size.height()));
    EXPECT_LE(difference(image.pixel(10, 20), qRgb(grey, grey, grey)), 2);
}

TEST_F(FillTest, OnlyThePartThatIsDrawnIsFilled)
{
    Reporting shown(Qt::white);
    shown.resize(size);
    setBackgroundColor(shown, Qt::red);
    shown.show();
    settle();
    shown.rects.clear();
    QImage image(size, QImage::Format_ARGB32);
    image.fill(Qt::blue);
    shown.render(&image, {3, 4}, QRegion(3, 4, 7, 8));
    EXPECT_EQ(shown.rects, (QList<QRect>{{3, 4, 7, 8}}));
    EXPECT_EQ(count(image, Qt::red), 56);
    EXPECT_EQ(count(image, Qt::blue), area - 56);
}

TEST_F(FillTest, APartOfSeveralPiecesIsFilledInThesePiecesOnly)
{
    setBackgroundColor(view, Qt::red);
    QImage image(size, QImage::Format_ARGB32);
    image.fill(Qt::blue);
    view.render(&image, {0, 0}, QRegion(0, 0, 5, 5) + QRegion(20, 20, 5, 5));
    EXPECT_EQ(count(image, Qt::red), 50);
    EXPECT_EQ(count(image, Qt::blue), area - 50);
}

TEST_F(FillTest, ANewColourIsDrawnWithoutBeingAskedFor)
{
    Reporting shown(Qt::white);
    shown.show();
    settle();
    shown.rects.clear();
    setBackgroundColor(shown, Qt::red);
    settle();
    EXPECT_EQ(shown.rects, QList<QRect>{shown.rect()});
    setGradientColor(shown, {{0, Qt::black}, {1, Qt::white}});
    settle();
    EXPECT_EQ(shown.rects, (QList<QRect>{shown.rect(), shown.rect()}));
}

TEST_F(FillTest, TheViewAndItsOwnFiltersSeeEachPaintEventOnce)
{
    Reporting reporting(Qt::white);
    reporting.resize(size);
    Counter counter;
    reporting.installEventFilter(&counter);
    setBackgroundColor(reporting, Qt::red);
    (void)reporting.drawn();
    EXPECT_EQ(reporting.rects.size(), 1);
    EXPECT_EQ(counter.paints, 1);
}

TEST_F(FillTest, AViewThatDrawsAnotherOneMeanwhile)
{
    setBackgroundColor(view, Qt::green);
    Reporting reporting(Qt::white);
    reporting.resize(size);
    reporting.other = &view;
    setBackgroundColor(reporting, Qt::red);
    EXPECT_EQ(count(reporting.drawn(), Qt::red), area);
    EXPECT_EQ(count(reporting.otherDrawn, Qt::green), area);
}

TEST_F(FillTest, AScrollAreasTextIsDrawnBelowTheGradientOfItsViewport)
{
    QPlainTextEdit edit(QStringLiteral("MMMM MMMM"));
    edit.resize(120, 60);
    QPalette palette;
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::Text, Qt::black);
    edit.setPalette(palette);
    setBackgroundColor(view, Qt::red);
    setGradientColor(*edit.viewport(), {{0, QColor(255, 0, 0, 128)}, {1, QColor(255, 0, 0, 128)}});
    const QImage image = edit.viewport()->grab().toImage().convertToFormat(QImage::Format_ARGB32);
    // Dark red letters on a light red ground.
    EXPECT_GT(count(image, QColor(128, 0, 0)), 20);
    EXPECT_GT(count(image, QColor(255, 127, 127)), 1000);
    setBackgroundColor(*edit.viewport(), Qt::blue);
    setGradientColor(*edit.viewport(), {});
    const QImage filled = edit.viewport()->grab().toImage().convertToFormat(QImage::Format_ARGB32);
    EXPECT_EQ(count(filled, Qt::blue), filled.width() * filled.height());
}

TEST_F(FillTest, AViewMayEndBeforeItIsDrawn)
{
    auto *const child = new PlainView(Qt::blue, &view);
    child->setGeometry(view.rect());
    view.show();
    settle();
    setBackgroundColor(*child, Qt::red);
    delete child;
    settle();
    EXPECT_EQ(count(view.drawn(), Qt::white), area);
}

} // namespace
