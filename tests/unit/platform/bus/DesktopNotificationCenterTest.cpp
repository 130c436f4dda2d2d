#include "platform/UserNotificationCenter.h"

#include "SomebodyElse.h"
#include "support/Waiting.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <gtest/gtest.h>

namespace
{

using namespace velq;
using velq::testing::SomebodyElse;
using velq::testing::waitUntil;

// Keeps the calls, and never answers one.
class RecordingDaemon : public QDBusVirtualObject
{
public:
    QString introspect(const QString &) const override { return {}; }
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &) override
    {
        calls.append(message);
        return true;
    }

    QList<QDBusMessage> calls;
};

class DesktopNotificationCenterTest : public ::testing::Test
{
protected:
    DesktopNotificationCenterTest()
    {
        auto bus = somebodyElse.connection();
        EXPECT_TRUE(
            bus.registerVirtualObject(QStringLiteral("/org/freedesktop/Notifications"), &daemon));
        EXPECT_TRUE(bus.registerService(QStringLiteral("org.freedesktop.Notifications")));
    }

    // The arguments of the one call that a delivery makes.
    QVariantList delivered(const char *title, const char *text)
    {
        DesktopNotificationCenter().deliver({QString::fromUtf8(title), QString::fromUtf8(text)});
        EXPECT_TRUE(waitUntil([this] { return !daemon.calls.isEmpty(); }));
        EXPECT_EQ(daemon.calls.size(), 1);
        return daemon.calls.value(0).arguments();
    }

    RecordingDaemon daemon;
    SomebodyElse somebodyElse;
};

TEST_F(DesktopNotificationCenterTest, CallsNotifyWithItsSignature)
{
    delivered("New device add", "ip: 192.168.1.7");
    const QDBusMessage &call = daemon.calls.first();
    EXPECT_EQ(call.interface(), QStringLiteral("org.freedesktop.Notifications"));
    EXPECT_EQ(call.member(), QStringLiteral("Notify"));
    EXPECT_EQ(call.signature(), QStringLiteral("susssasa{sv}i"));
}

TEST_F(DesktopNotificationCenterTest, TitleAndTextAreAllThatItShows)
{
    const QVariantList arguments =
        delivered("New device add", "ip: 192.168.1.7\nMac address: a:b:c:d:e:f");
    ASSERT_EQ(arguments.size(), 8);
    EXPECT_EQ(arguments[0], QStringLiteral("Velq"));
    EXPECT_EQ(arguments[1], 0u) << "it replaces none";
    EXPECT_EQ(arguments[2], QString()) << "no icon";
    EXPECT_EQ(arguments[3], QStringLiteral("New device add"));
    EXPECT_EQ(arguments[4], QStringLiteral("ip: 192.168.1.7\nMac address: a:b:c:d:e:f"));
    EXPECT_EQ(arguments[5], QStringList()) << "no actions";
    EXPECT_EQ(arguments[7], -1) << "the daemon decides how long";
}

TEST_F(DesktopNotificationCenterTest, HintsHaveNoImageAndNoSound)
{
    const auto hints =
        qdbus_cast<QVariantMap>(delivered("New device add", "ip: 192.168.1.7").value(6));
    EXPECT_EQ(hints,
              (QVariantMap{{QStringLiteral("desktop-entry"), QStringLiteral("com.zelmor.Monitor")},
                           {QStringLiteral("suppress-sound"), true}}));
}

TEST_F(DesktopNotificationCenterTest, TheBodyIsMarkupAndTheTitleIsNot)
{
    const QVariantList arguments = delivered("<a> & b", "<b>\"bold\"</b> & more");
    EXPECT_EQ(arguments.value(3), QStringLiteral("<a> & b"));
    EXPECT_EQ(arguments.value(4), QStringLiteral("&lt;b&gt;&quot;bold&quot;&lt;/b&gt; &amp; more"));
}

} // namespace
