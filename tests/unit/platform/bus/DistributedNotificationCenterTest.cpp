#include "platform/DistributedNotificationCenter.h"

#include "PostListener.h"
#include "SomebodyElse.h"
#include "support/Waiting.h"

#include <QDBusConnectionInterface>
#include <gtest/gtest.h>

namespace
{

using namespace velq;
using velq::testing::PostListener;
using velq::testing::SomebodyElse;
using velq::testing::waitUntil;

constexpr auto path = "/com/zelmor/DistributedNotificationCenter";
constexpr auto interface = "com.zelmor.DistributedNotificationCenter";

class DistributedNotificationCenterTest : public ::testing::Test
{
protected:
    DistributedNotificationCenterTest()
    {
        QObject::connect(&center, &DistributedNotificationCenter::posted, &listener,
                         &PostListener::hear);
        // The bus answers in order: from here on, what is posted is heard.
        center.post(QStringLiteral("ready"), {});
        EXPECT_TRUE(waitUntil([this] { return !listener.heard.isEmpty(); }));
        listener.heard.clear();
    }

    // Waits until everything that was sent before has been heard.
    void expectHeard(const QStringList &posts)
    {
        somebodyElse.emitSignal(path, interface, "Posted",
                                {QStringLiteral("last"), QStringLiteral("one")});
        EXPECT_TRUE(waitUntil([&] { return listener.heard.size() > posts.size(); }));
        EXPECT_EQ(listener.heard, posts + QStringList{QStringLiteral("last: one")});
    }

    SomebodyElse somebodyElse;
    DistributedNotificationCenter center;
    PostListener listener;
};

TEST_F(DistributedNotificationCenterTest, HearsWhatOthersPost)
{
    somebodyElse.emitSignal(path, interface, "Posted",
                            {QStringLiteral("MonitorStart"), QStringLiteral("NO")});
    somebodyElse.emitSignal(path, interface, "Posted",
                            {QStringLiteral("MonitorStart"), QStringLiteral("YES")});
    expectHeard({QStringLiteral("MonitorStart: NO"), QStringLiteral("MonitorStart: YES")});
}

TEST_F(DistributedNotificationCenterTest, HearsNothingElse)
{
    const QVariantList post{QStringLiteral("name"), QStringLiteral("object")};
    somebodyElse.emitSignal("/com/zelmor", interface, "Posted", post);
    somebodyElse.emitSignal(path, "com.zelmor.Other", "Posted", post);
    somebodyElse.emitSignal(path, interface, "Other", post);
    somebodyElse.emitSignal(path, interface, "Posted", {1, 2});
    somebodyElse.emitSignal(path, interface, "Posted", {});
    expectHeard({});
}

TEST_F(DistributedNotificationCenterTest, PostsToOthersAndToItself)
{
    PostListener other;
    ASSERT_TRUE(somebodyElse.connection().connect(
        QString(), QString::fromLatin1(path), QString::fromLatin1(interface),
        QStringLiteral("Posted"), &other, SLOT(hear(QString, QString))));
    ASSERT_TRUE(somebodyElse.connection().interface()->registeredServiceNames().isValid());
    center.post(QStringLiteral("MonitorStart"), QStringLiteral("YES"));
    center.post(QStringLiteral("MonitorStart"), {});
    const QStringList posts{QStringLiteral("MonitorStart: YES"), QStringLiteral("MonitorStart: ")};
    EXPECT_TRUE(waitUntil([&] { return other.heard.size() >= posts.size(); }));
    EXPECT_EQ(other.heard, posts);
    EXPECT_TRUE(waitUntil([&] { return listener.heard.size() >= posts.size(); }));
    EXPECT_EQ(listener.heard, posts);
}

} // namespace
