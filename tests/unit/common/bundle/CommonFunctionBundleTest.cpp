#include "common/PublicHosts.h"
#include "support/Waiting.h"
#include "unit/platform/bus/PostListener.h"

#include <QDBusConnection>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <unistd.h>

namespace
{

using velq::testing::PostListener;
using velq::testing::waitUntil;

// What a running application says of itself, asked from inside a bundle.
class CommonFunctionBundleTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(QDir().mkpath(contents + QStringLiteral("/MacOS")));
        ASSERT_TRUE(QFile::copy(QStringLiteral(VELQ_TEST_ASKER), program));
        setInformation("");
    }

    void write(const QString &path, const QByteArray &text) const
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

    /// The entries of the information dictionary.
    void setInformation(const QByteArray &entries) const
    {
        write(contents + QStringLiteral("/Info.plist"),
              "<plist version=\"1.0\"><dict>" + entries + "</dict></plist>");
    }

    void setText(const char *key, const char *text) const
    {
        setInformation("<key>" + QByteArray(key) + "</key><string>" + text + "</string>");
    }

    /// A line without its end; what went wrong where there is none.
    static QByteArray lineOf(const QString &file, const QStringList &arguments)
    {
        QProcess process;
        process.start(file, arguments);
        if (!process.waitForFinished() || process.exitCode() != 0)
            return "failed: " + process.readAllStandardError();
        return process.readAllStandardOutput().chopped(1);
    }

    QByteArray answer(const QStringList &question) const { return lineOf(program, question); }

    /// On a computer that a line of the shell has changed, seen by nobody else.
    QByteArray answerBehind(const QString &change, const QString &question) const
    {
        QStringList arguments{QStringLiteral("--mount"), QStringLiteral("--net")};
        if (geteuid() != 0)
            arguments.append(QStringLiteral("--map-root-user"));
        return lineOf(QStringLiteral("unshare"),
                      arguments << QStringLiteral("sh") << QStringLiteral("-ec")
                                << change + QStringLiteral("\nexec \"$0\" \"$@\"") << program
                                << question);
    }

    QByteArray systemVersion(const QByteArray &version) const
    {
        const QString release = folder.filePath(QStringLiteral("os-release"));
        write(release, "NAME=Test\nVERSION_ID=\"" + version + "\"\n");
        return answerBehind(QStringLiteral("mount --bind '%1' /etc/os-release").arg(release),
                            QStringLiteral("system"));
    }

    /// The probe's address is known; `network` makes the way to it.
    QByteArray connected(const QByteArray &network) const
    {
        const QString hosts = folder.filePath(QStringLiteral("hosts"));
        write(hosts, QByteArray("192.0.2.1 ") + velq::publichosts::probe.data() + '\n');
        return answerBehind(QStringLiteral("mount --bind '%1' /etc/hosts\n%2")
                                .arg(hosts, QString::fromUtf8(network)),
                            QStringLiteral("connected"));
    }

    QTemporaryDir folder;
    const QString contents =
        QDir(folder.path()).canonicalPath() + QStringLiteral("/Some.app/Contents");
    const QString program = contents + QStringLiteral("/MacOS/Asker");
};

class NamespaceTest : public CommonFunctionBundleTest
{
protected:
    void SetUp() override
    {
        CommonFunctionBundleTest::SetUp();
        const QByteArray refused = answerBehind(
            QStringLiteral("mount --bind /etc/hosts /etc/hosts"), QStringLiteral("name"));
        if (refused == "Asker")
            return;
        ASSERT_EQ(getenv("CI"), nullptr) << refused.toStdString();
        GTEST_SKIP() << refused.toStdString();
    }
};

TEST_F(CommonFunctionBundleTest, TheNameIsTheOneThatPeopleKnow)
{
    EXPECT_EQ(answer({QStringLiteral("name")}), "Asker");
    setText("CFBundleName", "Short");
    EXPECT_EQ(answer({QStringLiteral("name")}), "Short");
    setInformation("<key>CFBundleName</key><string>Short</string>"
                   "<key>CFBundleDisplayName</key><string>The Long Name</string>");
    EXPECT_EQ(answer({QStringLiteral("name")}), "The Long Name");
}

TEST_F(CommonFunctionBundleTest, TheVersionIsTheOneThatPeopleRead)
{
    setInformation("<key>CFBundleVersion</key><string>70</string>"
                   "<key>CFBundleShortVersionString</key><string>1.2.3</string>");
    EXPECT_EQ(answer({QStringLiteral("version")}), "1.2.3");
    setText("CFBundleVersion", "70");
    EXPECT_EQ(answer({QStringLiteral("version")}), "null");
}

TEST_F(CommonFunctionBundleTest, TheFlagOfOnlineUsersIsAnInteger)
{
    EXPECT_EQ(answer({QStringLiteral("online")}), "0") << "missing";
    const std::pair<const char *, const char *> texts[] = {
        {"", "0"}, {"3", "3"}, {"abc", "0"}, {"12 people", "12"}, {"-1", "-1"}};
    for (const auto &[text, number] : texts) {
        setText("OnlineUsers", text);
        EXPECT_EQ(answer({QStringLiteral("online")}), number) << text;
    }
    setInformation("<key>OnlineUsers</key><integer>7</integer>");
    EXPECT_EQ(answer({QStringLiteral("online")}), "7");
}

TEST_F(NamespaceTest, TheSystemsVersionGoesWithoutItsFirstNumber)
{
    EXPECT_EQ(systemVersion("10.9.5"), "95");
    EXPECT_EQ(systemVersion("10.13.6"), "136");
    EXPECT_EQ(systemVersion("12"), "00");
}

TEST_F(NamespaceTest, TheInternetIsThereWithAWayToIt)
{
    EXPECT_EQ(connected(""), "no");
    const QByteArray link = "ip link add lan0 type veth peer lan1\n"
                            "ip address add 198.51.100.2/24 dev lan0\n"
                            "ip link set lan0 up\n"
                            "ip link set lan1 up\n";
    EXPECT_EQ(connected(link), "no") << "only to the neighbours";
    EXPECT_EQ(connected(link + "ip route add default via 198.51.100.1"), "yes");
}

// The program that posts does not live to see it delivered.
TEST_F(CommonFunctionBundleTest, AMessageIsHeardThoughItsSenderEnds)
{
    PostListener listener;
    QDBusConnection bus = QDBusConnection::sessionBus();
    ASSERT_TRUE(bus.connect(QString(), QStringLiteral("/com/zelmor/DistributedNotificationCenter"),
                            QStringLiteral("com.zelmor.DistributedNotificationCenter"),
                            QStringLiteral("Posted"), &listener, SLOT(hear(QString, QString))));
    for (int posts = 1; posts <= 20; ++posts) {
        const QString number = QString::number(posts);
        ASSERT_EQ(answer({QStringLiteral("post"), QStringLiteral("MonitorStart"), number}),
                  "posted");
        ASSERT_TRUE(waitUntil([&] { return listener.heard.size() == posts; })) << posts;
        EXPECT_EQ(listener.heard.last(), QStringLiteral("MonitorStart: ") + number);
    }
}

} // namespace
