#include "monitor/tray/TrayStatusBar.h"

#include "../MenuTarget.h"
#include "FakeWatcher.h"
#include "TestImages.h"
#include "monitor/tray/DBusMenuTypes.h"
#include "monitor/tray/IconPixmap.h"
#include "support/Waiting.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{

using namespace velq;
using ::testing::UnorderedElementsAre;
using velq::testing::waitUntil;

constexpr QLatin1String menuPath("/MenuBar");
constexpr QLatin1String menuInterface("com.canonical.dbusmenu");

class TrayStatusBarTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        green = files.make(QStringLiteral("green"), Qt::green, {16, 22});
        red = files.make(QStringLiteral("red"), Qt::red, {16, 22});
        state = menu.addItem(QStringLiteral("Up"));
        act = menu.addItem(QStringLiteral("Act"));
        view.menButton->setMenu(&menu);
        view.statusImage->setImage(green);
        item = bar.statusItemWithLength(StatusBar::variableLength);
        item->setText(QStringLiteral("Up"));
    }

    void show()
    {
        item->setView(&view);
        ASSERT_TRUE(waitUntil([this] { return !watcher->registered.isEmpty(); }));
    }

    QList<IconPixmap> icon()
    {
        return qdbus_cast<QList<IconPixmap>>(watcher->itemProperty("IconPixmap"));
    }

    // What the bus had to carry so far has been carried once a call of the same sender is answered.
    QStringList signalsOf(const std::function<void()> &change)
    {
        watcher->itemProperty("Id");
        watcher->signalsSeen.clear();
        change();
        velq::testing::settle();
        watcher->itemProperty("Id");
        return watcher->signalsSeen;
    }

    TestImages files;
    std::shared_ptr<Image> green;
    std::shared_ptr<Image> red;
    MenuTarget target;
    Menu menu;
    MenuItem *state = nullptr;
    MenuItem *act = nullptr;
    StatusItemView view;
    TrayStatusBar bar;
    std::shared_ptr<StatusItem> item;
    std::optional<FakeWatcher> watcher{std::in_place};
};

TEST_F(TrayStatusBarTest, RegistersUnderANameOfItsOwn)
{
    show();
    ASSERT_EQ(watcher->registered.size(), 1);
    EXPECT_TRUE(watcher->registered[0].startsWith(
        QStringLiteral("org.kde.StatusNotifierItem-%1-").arg(getpid())));
}

TEST_F(TrayStatusBarTest, ShowsPicturesAndText)
{
    show();
    ASSERT_EQ(icon().size(), 2);
    EXPECT_EQ(icon()[1].width, 22);
    EXPECT_EQ(icon()[1].bytes.left(4).toHex(), "ff00ff00");
    const auto toolTip = qdbus_cast<ToolTip>(watcher->itemProperty("ToolTip"));
    EXPECT_EQ(toolTip.title, QStringLiteral("Up"));
    EXPECT_EQ(watcher->itemProperty("IconAccessibleDesc"), QStringLiteral("Up"));
    EXPECT_EQ(watcher->itemProperty("Title"), QStringLiteral("Velq: Up"));
    EXPECT_EQ(watcher->itemProperty("Status"), QStringLiteral("Active"));
    EXPECT_EQ(watcher->itemProperty("ItemIsMenu"), true);
}

TEST_F(TrayStatusBarTest, ChangesInOneGoAreOneSignalEach)
{
    show();
    const QStringList sent = signalsOf([this] {
        view.statusImage->setImage(nullptr);
        item->setText(QStringLiteral("Looking"));
        view.statusImage->setImage(red);
        item->setText(QStringLiteral("Down"));
    });
    EXPECT_THAT(sent,
                UnorderedElementsAre(QStringLiteral("NewIcon"), QStringLiteral("NewTitle"),
                                     QStringLiteral("NewToolTip")));
    EXPECT_EQ(icon()[0].bytes.left(4).toHex(), "ffff0000");
}

TEST_F(TrayStatusBarTest, WhatIsUnchangedInTheEndIsNotSent)
{
    show();
    const QStringList sent = signalsOf([this] {
        view.statusImage->setImage(red);
        act->setTarget(&target);
        view.statusImage->setImage(green);
        item->setText(QStringLiteral("Up"));
        act->setTarget(nullptr);
    });
    EXPECT_EQ(sent, QStringList());
}

TEST_F(TrayStatusBarTest, AViewThatShowsNothingIsTransparent)
{
    show();
    view.statusImage->setImage(nullptr);
    velq::testing::settle();
    ASSERT_EQ(icon().size(), 1);
    EXPECT_EQ(icon()[0].bytes.count('\0'), icon()[0].bytes.size());
}

TEST_F(TrayStatusBarTest, AWatcherThatComesLaterGetsTheItem)
{
    watcher.reset();
    item->setView(&view);
    velq::testing::settle();
    watcher.emplace();
    EXPECT_TRUE(waitUntil([this] { return watcher->registered.size() == 1; }));
}

TEST_F(TrayStatusBarTest, ARestartedWatcherGetsTheItemAgain)
{
    show();
    watcher.reset();
    watcher.emplace();
    ASSERT_TRUE(waitUntil([this] { return watcher->registered.size() == 1; }));
    EXPECT_EQ(watcher->itemProperty("IconAccessibleDesc"), QStringLiteral("Up"));
}

TEST_F(TrayStatusBarTest, WaitsForTheWatchersHost)
{
    watcher->setHasHost(false);
    item->setView(&view);
    ASSERT_TRUE(waitUntil([this] { return watcher->timesAsked() >= 2; }));
    EXPECT_TRUE(watcher->registered.isEmpty());
    watcher->setHasHost(true);
    EXPECT_TRUE(waitUntil([this] { return watcher->registered.size() == 1; }));
}

TEST_F(TrayStatusBarTest, LeavesTheBusWithItsLastHolder)
{
    show();
    item.reset();
    EXPECT_TRUE(waitUntil([this] { return !watcher->itemProperty("Id").isValid(); }));
}

TEST_F(TrayStatusBarTest, ClicksReachTheButton)
{
    show();
    int asked = 0;
    QObject::connect(&menu, &Menu::popUpRequested, [&asked] { ++asked; });
    watcher->callItem("Activate", {1, 1});
    EXPECT_EQ(asked, 1);
    watcher->callItem("ContextMenu", {1, 1});
    EXPECT_EQ(asked, 2);
    watcher->callItem("SecondaryActivate", {1, 1});
    watcher->callItem("Scroll", {120, QStringLiteral("vertical")});
    EXPECT_EQ(asked, 2);
}

TEST_F(TrayStatusBarTest, TheMenuGoesOverTheBus)
{
    show();
    EXPECT_EQ(watcher->itemProperty("Menu").value<QDBusObjectPath>().path(), menuPath);
    EXPECT_EQ(watcher->read(menuPath, menuInterface, QStringLiteral("Version")), 3U);
    const QVariant items = watcher->call(
        menuPath, menuInterface, QStringLiteral("GetGroupProperties"),
        {QVariant::fromValue(QList<int>{1, 2, 77}), QStringList{QStringLiteral("label")}});
    const auto read = qdbus_cast<QList<DBusMenuItem>>(items);
    ASSERT_EQ(read.size(), 2);
    EXPECT_EQ(read[1].properties.value(QStringLiteral("label")), QStringLiteral("Act"));
}

TEST_F(TrayStatusBarTest, ChangesOfAMenuEntryAreOneSignal)
{
    show();
    const QStringList sent = signalsOf([this] {
        state->setTitle(QStringLiteral("Down"));
        act->setTarget(&target);
        act->setAction("act");
    });
    EXPECT_EQ(sent, QStringList{QStringLiteral("ItemsPropertiesUpdated")});
}

TEST_F(TrayStatusBarTest, AnEntryChosenOverTheBusActs)
{
    act->setTarget(&target);
    act->setAction("act");
    show();
    watcher->call(menuPath, menuInterface, QStringLiteral("Event"),
                  {2, QStringLiteral("clicked"), QVariant::fromValue(QDBusVariant(QString())), 0U});
    EXPECT_TRUE(waitUntil([this] { return target.calls == 1; }));
}

} // namespace
