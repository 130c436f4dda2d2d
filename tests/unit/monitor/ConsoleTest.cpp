#include "MenuTarget.h"
#include "monitor/console/ConsoleNotificationCenter.h"
#include "monitor/console/ConsoleStatusBar.h"
#include "support/Waiting.h"

#include <gtest/gtest.h>

namespace
{

using namespace velq;
using ::testing::internal::CaptureStdout;
using ::testing::internal::GetCapturedStdout;
using velq::testing::settle;

// The lines without their times.
QStringList captured()
{
    settle();
    QStringList lines;
    for (const QString &line :
         QString::fromStdString(GetCapturedStdout()).split(QLatin1Char('\n'), Qt::SkipEmptyParts))
        lines.append(line.mid(QStringLiteral("2026-11-21 08:00:00  ").size()));
    return lines;
}

class ConsoleTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        quit = menu.addItem(QStringLiteral("Quit"), QStringLiteral("q"));
        view.menButton->setMenu(&menu);
        CaptureStdout();
    }

    ConsoleOutput output;
    ConsoleStatusBar bar{output};
    Menu menu;
    MenuItem *quit = nullptr;
    StatusItemView view;
};

TEST_F(ConsoleTest, TheLineSaysTheStateAndWhatCanBeChosen)
{
    MenuTarget answering;
    const auto item = bar.statusItemWithLength(-1);
    item->setView(&view);
    item->setText(QStringLiteral("Down"));
    settle();
    quit->setTarget(&answering);
    quit->setAction("act");
    EXPECT_EQ(captured(),
              (QStringList{QStringLiteral("Down"), QStringLiteral("Down. Available: Quit (q).")}));
}

TEST_F(ConsoleTest, SeveralChangesAreOneLineAndNoChangeIsNone)
{
    const auto item = bar.statusItemWithLength(-1);
    item->setView(&view);
    item->setText(QStringLiteral("Up"));
    quit->setTitle(QStringLiteral("End"));
    settle();
    item->setText(QStringLiteral("Down"));
    item->setText(QStringLiteral("Up"));
    settle();
    item->setText(QStringLiteral("Down"));
    EXPECT_EQ(captured(), (QStringList{QStringLiteral("Up"), QStringLiteral("Down")}));
}

TEST_F(ConsoleTest, NotificationsAreOneLineEach)
{
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
    ConsoleNotificationCenter center(output);
    center.deliver({QStringLiteral("New device add"), QStringLiteral("ip: a\nMac address: b")});
    EXPECT_EQ(captured(), QStringList{QStringLiteral("New device add: ip: a, Mac address: b")});
}

} // namespace
