#include "monitor/tray/PopUpMenu.h"

#include "../MenuTarget.h"
#include "monitor/Menu.h"

#include <QApplication>
#include <QMenu>
#include <gtest/gtest.h>

namespace
{

using namespace velq;

QList<QMenu *> menus()
{
    QList<QMenu *> found;
    for (QWidget *window : QApplication::topLevelWidgets())
        if (auto *menu = qobject_cast<QMenu *>(window); menu != nullptr)
            found.append(menu);
    return found;
}

class PopUpMenuTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        state = model.addItem(QStringLiteral("Up"));
        model.addSeparator();
        act = model.addItem(QStringLiteral("This & that"));
        act->setTarget(&target);
        act->setAction("act");
        popUp.setMenu(&model);
    }

    void open() { model.popUpMenuPositioningItem(nullptr, {40, 30}, nullptr); }

    MenuTarget target;
    Menu model;
    MenuItem *state = nullptr;
    MenuItem *act = nullptr;
    PopUpMenu popUp;
};

TEST_F(PopUpMenuTest, IsMadeWhenFirstNeeded)
{
    EXPECT_TRUE(menus().isEmpty());
    open();
    ASSERT_EQ(menus().size(), 1);
    EXPECT_TRUE(menus()[0]->isVisible());
    EXPECT_EQ(menus()[0]->pos(), QPoint(40, 30));
}

TEST_F(PopUpMenuTest, ShowsTheEntriesGreyedAsTheModelSays)
{
    open();
    const QList<QAction *> actions = menus().at(0)->actions();
    ASSERT_EQ(actions.size(), 3);
    EXPECT_EQ(actions[0]->text(), QStringLiteral("Up"));
    EXPECT_FALSE(actions[0]->isEnabled());
    EXPECT_TRUE(actions[1]->isSeparator());
    EXPECT_EQ(actions[2]->text(), QStringLiteral("This && that"));
    EXPECT_TRUE(actions[2]->isEnabled());
}

TEST_F(PopUpMenuTest, FollowsTheModelWhileItIsOpen)
{
    open();
    state->setTitle(QStringLiteral("Down"));
    act->setTarget(nullptr);
    EXPECT_EQ(menus().at(0)->actions()[0]->text(), QStringLiteral("Down"));
    EXPECT_FALSE(menus().at(0)->actions()[2]->isEnabled());
}

TEST_F(PopUpMenuTest, TheChosenEntryActs)
{
    open();
    menus().at(0)->actions()[2]->trigger();
    EXPECT_EQ(target.calls, 1);
}

TEST_F(PopUpMenuTest, AskedAgainItClosesAndNeverStacks)
{
    open();
    open();
    ASSERT_EQ(menus().size(), 1);
    EXPECT_FALSE(menus()[0]->isVisible());
    open();
    ASSERT_EQ(menus().size(), 1);
    EXPECT_TRUE(menus()[0]->isVisible());
}

TEST_F(PopUpMenuTest, LosesItsWindowWithItsMenu)
{
    open();
    popUp.setMenu(nullptr);
    EXPECT_TRUE(menus().isEmpty());
    open();
    EXPECT_TRUE(menus().isEmpty());
}

} // namespace
