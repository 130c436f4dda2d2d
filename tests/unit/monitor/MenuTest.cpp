#include "monitor/Menu.h"
#include "MenuTarget.h"
#include "monitor/CustomeButton.h"

#include <gtest/gtest.h>

namespace velq
{
namespace
{

class MenuItemTest : public testing::Test
{
protected:
    Menu menu;
    MenuItem *item = menu.addItem(QStringLiteral("Title"), QStringLiteral("t"));
    MenuTarget target;
};

TEST_F(MenuItemTest, IsActiveOnlyWithATargetThatAnswersTheAction)
{
    EXPECT_FALSE(item->isEnabled());
    item->setAction("act");
    EXPECT_FALSE(item->isEnabled());
    item->setTarget(&target);
    EXPECT_TRUE(item->isEnabled());
    item->setAction("unknown");
    EXPECT_FALSE(item->isEnabled());
    item->setAction("wrongSignature");
    EXPECT_FALSE(item->isEnabled());
    item->setAction({});
    EXPECT_FALSE(item->isEnabled());
}

TEST_F(MenuItemTest, ATargetThatIsGoneGreysIt)
{
    {
        MenuTarget shortLived;
        item->setTarget(&shortLived);
        item->setAction("act");
        EXPECT_TRUE(item->isEnabled());
    }
    EXPECT_FALSE(item->isEnabled());
    item->choose();
}

TEST_F(MenuItemTest, ChoosingSendsTheActionWithTheEntryAsSender)
{
    item->choose();
    EXPECT_EQ(target.calls, 0);
    item->setTarget(&target);
    item->setAction("act");
    item->choose();
    EXPECT_EQ(target.calls, 1);
    EXPECT_EQ(target.sender, item);
}

TEST_F(MenuItemTest, OnlyChangesAreTold)
{
    int changes = 0;
    QObject::connect(&menu, &Menu::itemChanged, [&] { ++changes; });
    item->setTitle(QStringLiteral("Title"));
    item->setTarget(nullptr);
    item->setAction({});
    EXPECT_EQ(changes, 0);
    item->setTitle(QStringLiteral("Other"));
    item->setTarget(&target);
    item->setAction("act");
    EXPECT_EQ(changes, 3);
}

TEST_F(MenuItemTest, ASeparatorIsNoEntry)
{
    menu.addSeparator();
    EXPECT_FALSE(item->isSeparatorItem());
    EXPECT_TRUE(menu.items().last()->isSeparatorItem());
    EXPECT_FALSE(menu.items().last()->isEnabled());
}

template <typename Button> int popUpsAfter(void (PopUpButton::*click)())
{
    Menu menu;
    int popUps = 0;
    QObject::connect(&menu, &Menu::popUpRequested, [&] { ++popUps; });
    Button button;
    (button.*click)();
    button.setMenu(&menu);
    (button.*click)();
    return popUps;
}

TEST(CustomeButtonTest, BothClicksOpenItsMenu)
{
    EXPECT_EQ(popUpsAfter<CustomeButton>(&PopUpButton::mouseDown), 1);
    EXPECT_EQ(popUpsAfter<CustomeButton>(&PopUpButton::rightMouseDown), 1);
}

TEST(CustomeButtonTest, APlainButtonIgnoresTheRightOne)
{
    EXPECT_EQ(popUpsAfter<PopUpButton>(&PopUpButton::mouseDown), 1);
    EXPECT_EQ(popUpsAfter<PopUpButton>(&PopUpButton::rightMouseDown), 0);
}

} // namespace
} // namespace velq
