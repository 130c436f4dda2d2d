#include "diagnosis/views/ProxyControlView.h"

#include "scanner/NSButton_service.h"

#include <QCheckBox>
#include <gtest/gtest.h>

namespace
{

using namespace velq;

ProxyServer proxy(const char *type)
{
    ProxyServer made;
    made.proxyType = QString::fromLatin1(type);
    return made;
}

// In the order in which they were added.
QList<QCheckBox *> boxesOf(const QWidget &view)
{
    return view.findChildren<QCheckBox *>(Qt::FindDirectChildrenOnly);
}

const QList<ProxyServer> three{proxy("HTTP"), proxy("HTTPS"), proxy("FTP")};

TEST(ProxyControlViewTest, WithoutProxiesHasNoHeight)
{
    const ProxyControlView view({}, {});
    EXPECT_EQ(view.size(), QSize(492, 0));
    EXPECT_TRUE(view.findChildren<QWidget *>().isEmpty());
}

TEST(ProxyControlViewTest, HasARowForEachProxyTheFirstOnTop)
{
    const ProxyControlView view(three, {});
    EXPECT_EQ(view.geometry(), QRect(0, 0, 492, 90));
    const auto boxes = boxesOf(view);
    ASSERT_EQ(boxes.size(), 3);
    // Counted upwards from the lower edge: 65, 35 and 5.
    EXPECT_EQ(boxes[0]->geometry(), QRect(0, 90 - 65 - 20, 492, 20));
    EXPECT_EQ(boxes[1]->geometry(), QRect(0, 90 - 35 - 20, 492, 20));
    EXPECT_EQ(boxes[2]->geometry(), QRect(0, 90 - 5 - 20, 492, 20));
}

TEST(ProxyControlViewTest, TheBoxesCarryPlaceAndKindAndAreChecked)
{
    const ProxyControlView view(three, {});
    const auto boxes = boxesOf(view);
    ASSERT_EQ(boxes.size(), 3);
    for (qsizetype row = 0; row < 3; ++row) {
        EXPECT_EQ(getIndex(*boxes[row]), row);
        EXPECT_EQ(boxes[row]->text(), three[row].proxyType);
        EXPECT_TRUE(boxes[row]->isChecked());
    }
}

TEST(ProxyControlViewTest, AClickTellsWhichBoxIsNowHow)
{
    QStringList told;
    const ProxyControlView view(three, [&](const QObject &sender) {
        told.append(QStringLiteral("%1 %2")
                        .arg(getIndex(sender))
                        .arg(sender.property("checked").toBool() ? QStringLiteral("on")
                                                                 : QStringLiteral("off")));
    });
    const auto boxes = boxesOf(view);
    ASSERT_EQ(boxes.size(), 3);
    boxes[2]->click();
    boxes[0]->click();
    boxes[2]->click();
    EXPECT_EQ(
        told,
        (QStringList{QStringLiteral("2 off"), QStringLiteral("0 off"), QStringLiteral("2 on")}));
}

TEST(ProxyControlViewTest, AClickThatNobodyWaitsForOnlyTurnsTheBox)
{
    const ProxyControlView view({proxy("HTTP")}, {});
    boxesOf(view).at(0)->click();
    EXPECT_FALSE(boxesOf(view).at(0)->isChecked());
}

} // namespace
