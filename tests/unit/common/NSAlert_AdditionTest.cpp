#include "common/NSAlert_Addition.h"

#include "common/AlertPanel.h"

#include <gtest/gtest.h>

namespace
{

using velq::AlertPanel;
using velq::NSAlert_Addition;

// Somebody who clicks at once, and what happens in which order.
class ClickingPanel : public AlertPanel
{
public:
    ClickingPanel(qint64 tag, QStringList &events)
        : m_tag(tag)
        , m_events(events)
    {
    }
    void runModal(NSAlert_Addition &alert) override
    {
        alert.buttonPressed(m_tag);
        m_events.append(QStringLiteral("run ended"));
    }
    void closeWindow() override { m_events.append(QStringLiteral("closed")); }
    void stopModal() override { m_events.append(QStringLiteral("stopped")); }

private:
    qint64 m_tag;
    QStringList &m_events;
};

std::unique_ptr<NSAlert_Addition> alertWith(const QStringList &otherBtn,
                                            NSAlert_Addition::CompletionHandler completion = {})
{
    return NSAlert_Addition::alertWithMessage(QStringLiteral("message"),
                                              QStringLiteral("description"), QStringLiteral("OK"),
                                              std::move(completion), otherBtn);
}

QStringList labels(const NSAlert_Addition &alert)
{
    QStringList labels;
    for (const NSAlert_Addition::Button &button : alert.buttons())
        labels.append(QStringLiteral("%1 %2").arg(button.title).arg(button.tag));
    return labels;
}

TEST(NSAlert_AdditionTest, HoldsItsTexts)
{
    EXPECT_EQ(alertWith({})->message(), QStringLiteral("message"));
    EXPECT_EQ(alertWith({})->description(), QStringLiteral("description"));
}

TEST(NSAlert_AdditionTest, TheCancelButtonAloneHasTheFirstTag)
{
    EXPECT_EQ(labels(*alertWith({})), QStringList{QStringLiteral("OK 1000")});
    EXPECT_EQ(labels(*alertWith({QString()})), QStringList{QStringLiteral("OK 1000")});
}

TEST(NSAlert_AdditionTest, FurtherButtonsCountOn)
{
    EXPECT_EQ(labels(*alertWith({QStringLiteral("A"), QStringLiteral("B")})),
              (QStringList{QStringLiteral("OK 1000"), QStringLiteral("A 1001"),
                           QStringLiteral("B 1002")}));
}

TEST(NSAlert_AdditionTest, AnEmptyTitleEndsTheList)
{
    EXPECT_EQ(labels(*alertWith({QStringLiteral("A"), QStringLiteral(""), QStringLiteral("B")})),
              (QStringList{QStringLiteral("OK 1000"), QStringLiteral("A 1001")}));
    EXPECT_EQ(labels(*alertWith({QStringLiteral("A"), QString(), QStringLiteral("B")})),
              (QStringList{QStringLiteral("OK 1000"), QStringLiteral("A 1001")}));
}

TEST(NSAlert_AdditionTest, AClickClosesStopsAndTellsBeforeTheRunEnds)
{
    QStringList events;
    ClickingPanel panel(1001, events);
    alertWith({QStringLiteral("A")}, [&](qint64 tag) {
        events.append(QString::number(tag));
    })->runModal(panel);
    EXPECT_EQ(events,
              (QStringList{QStringLiteral("closed"), QStringLiteral("stopped"),
                           QStringLiteral("1001"), QStringLiteral("run ended")}));
}

TEST(NSAlert_AdditionTest, AClickThatNobodyWaitsForOnlyClosesAndStops)
{
    QStringList events;
    ClickingPanel panel(NSAlert_Addition::cancelTag, events);
    alertWith({})->runModal(panel);
    EXPECT_EQ(events,
              (QStringList{QStringLiteral("closed"), QStringLiteral("stopped"),
                           QStringLiteral("run ended")}));
}

TEST(NSAlert_AdditionTest, NoHandlerReplacesNone)
{
    qint64 told = 0;
    const auto alert = alertWith({}, [&](qint64 tag) { told = tag; });
    alert->setCompletionHandler({});
    alert->buttonPressed(1000);
    EXPECT_EQ(told, 1000);
    alert->setCompletionHandler([&](qint64 tag) { told = -tag; });
    alert->buttonPressed(1000);
    EXPECT_EQ(told, -1000);
}

} // namespace
