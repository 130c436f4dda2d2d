#include "monitor/AppDelegate.h"
#include "monitor/MainInterface.h"
#include "platform/DistributedNotificationCenter.h"
#include "support/FakeTool.h"
#include "support/TestBundle.h"
#include "support/Waiting.h"
#include "unit/monitor/TestSurroundings.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTimer>
#include <gtest/gtest.h>

namespace
{

using namespace velq;
using velq::testing::FakeTools;
using velq::testing::hasExited;
using velq::testing::RecordingStatusBar;
using velq::testing::SilentCenter;
using velq::testing::TestBundle;
using velq::testing::waitUntil;

const QString mainApplication = QStringLiteral("com.zelmor.Velq");

// The delegate of a person with an empty home, no bus and no service manager.
class OpenAndQuitTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        qputenv("HOME", home.path().toLocal8Bit());
        qputenv("XDG_RUNTIME_DIR", home.path().toLocal8Bit());
        qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
        qputenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent");
        unsetenv("DISPLAY");
        tools.addPrinting(QStringLiteral("launchctl"), {});
        distributed = std::make_unique<DistributedNotificationCenter>();
        delegate =
            std::make_unique<AppDelegate>(Surroundings{statusBar, notifications, *distributed});
        interface.connectOutlets(*delegate);
    }

    QString inHome(const QString &path) const { return home.path() + path; }

    void write(const QString &path, const QByteArray &text) const
    {
        const QString file = inHome(path);
        ASSERT_TRUE(QDir().mkpath(QFileInfo(file).path()));
        QFile output(file);
        ASSERT_TRUE(output.open(QIODevice::WriteOnly));
        output.write(text);
    }

    void writePreferences(const QByteArray &item) const
    {
        write(QStringLiteral("/Library/Preferences/com.zelmor.Velq.plist"),
              "<plist version=\"1.0\"><dict>" + item + "</dict></plist>");
    }

    void choose(const QString &title) const
    {
        for (MenuItem *item : delegate->mainMenu()->items()) {
            if (item->title() == title)
                item->choose();
        }
    }

    // The event loop ends by that, and only by that.
    int quit() const
    {
        QTimer::singleShot(0, delegate.get(), [this] { choose(QStringLiteral("Quit")); });
        QTimer::singleShot(std::chrono::seconds(40), delegate.get(),
                           [] { QCoreApplication::exit(1); });
        return QCoreApplication::exec();
    }

    static pid_t startAndAwait(const TestBundle &bundle)
    {
        const auto before = bundle.log().size();
        const pid_t pid = bundle.start();
        EXPECT_TRUE(waitUntil([&] { return bundle.log().size() > before; }));
        return pid;
    }

    QTemporaryDir home;
    FakeTools tools;
    RecordingStatusBar statusBar;
    SilentCenter notifications;
    std::unique_ptr<DistributedNotificationCenter> distributed;
    MainInterface interface;
    std::unique_ptr<AppDelegate> delegate;
};

TEST_F(OpenAndQuitTest, OpenStartsTheApplicationThatItsPreferencesName)
{
    const TestBundle bundle(mainApplication);
    writePreferences("<key>appPath</key><string>" + bundle.path().toUtf8() + "</string>");
    choose(QStringLiteral("Open Velq"));
    EXPECT_TRUE(waitUntil([&] { return !bundle.log().isEmpty(); }));
    EXPECT_EQ(bundle.log().count(QStringLiteral("opened")), 1);
}

TEST_F(OpenAndQuitTest, WithoutAPathOpenDoesNothing)
{
    const TestBundle bundle(mainApplication);
    choose(QStringLiteral("Open Velq"));
    write(QStringLiteral("/Library/Preferences/com.zelmor.Velq.plist"), "damaged");
    choose(QStringLiteral("Open Velq"));
    writePreferences("<key>other</key><string>" + bundle.path().toUtf8() + "</string>");
    choose(QStringLiteral("Open Velq"));
    writePreferences("<key>appPath</key><integer>1</integer>");
    choose(QStringLiteral("Open Velq"));
    writePreferences("<key>appPath</key><data>" + bundle.path().toUtf8().toBase64() + "</data>");
    choose(QStringLiteral("Open Velq"));
    writePreferences("<key>appPath</key><string>/nonexistent/Velq.app</string>");
    choose(QStringLiteral("Open Velq"));
    EXPECT_TRUE(bundle.processes().isEmpty());
    EXPECT_TRUE(bundle.log().isEmpty());
}

TEST_F(OpenAndQuitTest, QuitAsksEveryInstanceUnloadsTheAgentAndEnds)
{
    const TestBundle first(mainApplication);
    const TestBundle second(mainApplication);
    const TestBundle other(mainApplication + QStringLiteral("Other"));
    const QList<pid_t> asked{startAndAwait(first), startAndAwait(first), startAndAwait(second)};
    const pid_t unasked = startAndAwait(other);
    write(QStringLiteral("/Library/LaunchAgents/com.zelmor.Monitor.plist"), "kept");
    EXPECT_EQ(quit(), 0);
    for (const pid_t pid : asked)
        EXPECT_TRUE(hasExited(pid));
    EXPECT_EQ(other.processes(), QList<pid_t>{unasked});
    const QString agent = inHome(QStringLiteral("/Library/LaunchAgents/com.zelmor.Monitor.plist"));
    EXPECT_EQ(tools.log(), "launchctl unload " + agent.toLocal8Bit() + "\n");
    EXPECT_TRUE(QFile::exists(agent));
}

TEST_F(OpenAndQuitTest, TheApplicationIsAskedBeforeTheAgentIsUnloaded)
{
    const TestBundle bundle(mainApplication);
    const pid_t pid = startAndAwait(bundle);
    // It returns when the application has been asked, or else gives up.
    tools.add(QStringLiteral("launchctl"),
              "for try in $(seq 500); do grep -q terminated '" + bundle.path().toLocal8Bit()
                  + "/Contents/log' && exec touch '"
                  + tools.path(QStringLiteral("unloaded")).toLocal8Bit() + "'; sleep 0.02; done");
    write(QStringLiteral("/Library/LaunchAgents/com.zelmor.Monitor.plist"), {});
    EXPECT_EQ(quit(), 0);
    EXPECT_TRUE(QFile::exists(tools.path(QStringLiteral("unloaded"))));
    EXPECT_TRUE(hasExited(pid));
}

TEST_F(OpenAndQuitTest, WithoutAnAgentQuitStillEndsBoth)
{
    const TestBundle bundle(mainApplication);
    const pid_t pid = startAndAwait(bundle);
    EXPECT_EQ(quit(), 0);
    EXPECT_TRUE(hasExited(pid));
    EXPECT_EQ(bundle.log().last(), QStringLiteral("terminated"));
    EXPECT_TRUE(tools.log().isEmpty());
}

TEST_F(OpenAndQuitTest, AFailingToolDoesNotKeepTheMonitor)
{
    tools.add(QStringLiteral("launchctl"), "exit 1");
    write(QStringLiteral("/Library/LaunchAgents/com.zelmor.Monitor.plist"), {});
    EXPECT_EQ(quit(), 0);
}

TEST_F(OpenAndQuitTest, TheAgentsFolderIsMade)
{
    const QString folder = inHome(QStringLiteral("/Library/LaunchAgents"));
    EXPECT_TRUE(delegate->miniLaunchAgentPath().isNull());
    EXPECT_TRUE(QFileInfo(folder).isDir());
    EXPECT_EQ(delegate->launchAgentPath(), folder);
    write(QStringLiteral("/Library/LaunchAgents/com.zelmor.Monitor.plist"), {});
    EXPECT_EQ(delegate->miniLaunchAgentPath(),
              folder + QStringLiteral("/com.zelmor.Monitor.plist"));
}

TEST_F(OpenAndQuitTest, AFolderThatCannotBeMadeIsStillNamed)
{
    write(QStringLiteral("/Library"), "a file");
    EXPECT_EQ(delegate->launchAgentPath(), inHome(QStringLiteral("/Library/LaunchAgents")));
    EXPECT_TRUE(delegate->miniLaunchAgentPath().isNull());
}

TEST_F(OpenAndQuitTest, OnlyFilesThatAreThereAreLoadedAndUnloaded)
{
    delegate->launchctlApplicationInPath(QString(), QStringLiteral("unload"));
    delegate->launchctlApplicationInPath(inHome(QStringLiteral("/absent")), QStringLiteral("load"));
    EXPECT_TRUE(tools.log().isEmpty());
    write(QStringLiteral("/\u00e9.plist"), {});
    delegate->launchctlApplicationInPath(inHome(QStringLiteral("/\u00e9.plist")),
                                         QStringLiteral("load"));
    EXPECT_EQ(tools.log(), "launchctl load " + home.path().toUtf8() + "/\xc3\xa9.plist\n");
}

} // namespace
