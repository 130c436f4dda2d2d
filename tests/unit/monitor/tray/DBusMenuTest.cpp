#include "monitor/tray/DBusMenu.h"

#include "../MenuTarget.h"
#include "monitor/Menu.h"
#include "support/Waiting.h"

#include <gtest/gtest.h>

namespace
{

using namespace velq;
using velq::testing::settle;

QVariant property(const DBusMenu &menu, int id, const char *name)
{
    return menu.properties(id).value(QLatin1String(name));
}

class DBusMenuTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        state = model.addItem(QStringLiteral("Up"));
        model.addSeparator();
        act = model.addItem(QStringLiteral("Act"));
        act->setTarget(&target);
        act->setAction("act");
        menu.setMenu(&model);
    }

    QObject parent;
    MenuTarget target;
    Menu model;
    MenuItem *state = nullptr;
    MenuItem *act = nullptr;
    DBusMenu menu{&parent};
};

TEST_F(DBusMenuTest, TheRootHoldsTheEntriesInTheirOrder)
{
    const DBusMenuLayout layout = menu.layout(0, -1, {});
    EXPECT_EQ(layout.properties.value(QStringLiteral("children-display")),
              QStringLiteral("submenu"));
    ASSERT_EQ(layout.children.size(), 3);
    EXPECT_EQ(layout.children[0].properties.value(QStringLiteral("label")), QStringLiteral("Up"));
    EXPECT_EQ(layout.children[1].properties.value(QStringLiteral("type")),
              QStringLiteral("separator"));
    EXPECT_EQ(layout.children[2].id, 3);
}

TEST_F(DBusMenuTest, WithoutDepthThereAreNoChildren)
{
    EXPECT_TRUE(menu.layout(0, 0, {}).children.isEmpty());
    EXPECT_EQ(menu.layout(0, 1, {}).children.size(), 3);
    EXPECT_TRUE(menu.layout(3, -1, {}).children.isEmpty());
}

TEST_F(DBusMenuTest, AnEntryIsEnabledAsTheModelSays)
{
    EXPECT_EQ(property(menu, 1, "enabled"), false);
    EXPECT_EQ(property(menu, 3, "enabled"), true);
    act->setAction({});
    EXPECT_EQ(property(menu, 3, "enabled"), false);
}

TEST_F(DBusMenuTest, OnlyTheWantedPropertiesAreGiven)
{
    EXPECT_EQ(menu.properties(3, {QStringLiteral("label"), QStringLiteral("icon-name")}),
              (QVariantMap{{QStringLiteral("label"), QStringLiteral("Act")}}));
}

TEST_F(DBusMenuTest, AnUnderscoreIsNoMnemonicAndScreenReadersGetThePlainTitle)
{
    act->setTitle(QStringLiteral("a_b"));
    EXPECT_EQ(property(menu, 3, "label"), QStringLiteral("a__b"));
    EXPECT_EQ(property(menu, 3, "accessible-desc"), QStringLiteral("a_b"));
}

TEST_F(DBusMenuTest, AnUnknownNumberHasNothing)
{
    for (const int id : {-1, 4, 1000}) {
        EXPECT_FALSE(menu.knows(id));
        EXPECT_TRUE(menu.properties(id).isEmpty());
        EXPECT_TRUE(menu.layout(id, -1, {}).children.isEmpty());
        menu.clicked(id);
    }
}

TEST_F(DBusMenuTest, AClickChoosesTheEntryAfterwards)
{
    menu.clicked(3);
    EXPECT_EQ(target.calls, 0);
    settle();
    EXPECT_EQ(target.calls, 1);
    EXPECT_EQ(target.sender, act);
}

TEST_F(DBusMenuTest, AClickOnAGreyedEntryDoesNothing)
{
    act->setTarget(nullptr);
    menu.clicked(3);
    menu.clicked(1);
    settle();
    EXPECT_EQ(target.calls, 0);
}

TEST_F(DBusMenuTest, WithoutAMenuThereIsOnlyTheRoot)
{
    const uint before = menu.revision();
    menu.setMenu(nullptr);
    EXPECT_GT(menu.revision(), before);
    EXPECT_EQ(menu.ids(), QList<int>{0});
    EXPECT_TRUE(menu.layout(0, -1, {}).children.isEmpty());
}

} // namespace
