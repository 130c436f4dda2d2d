#include "platform/Workspace.h"

#include "support/FakeTool.h"
#include "support/TestBundle.h"
#include "support/Waiting.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

using namespace velq;
using velq::testing::hasExited;
using velq::testing::TestBundle;
using velq::testing::waitUntil;

// No service manager answers here: what is opened is started by the process itself.
class WorkspaceTest : public ::testing::Test
{
protected:
    void SetUp() override { qputenv("XDG_RUNTIME_DIR", runtime.path().toLocal8Bit()); }

    static QList<RunningApplication> instancesOf(const TestBundle &bundle)
    {
        QList<RunningApplication> instances;
        for (const RunningApplication &each : Workspace::runningApplications()) {
            if (each.bundlePath() == bundle.path())
                instances.append(each);
        }
        return instances;
    }

    static pid_t startAndAwait(const TestBundle &bundle)
    {
        const auto before = bundle.log().size();
        const pid_t pid = bundle.start();
        EXPECT_TRUE(waitUntil([&] { return bundle.log().size() > before; }));
        return pid;
    }

    QTemporaryDir runtime;
    // Not the product's, which tests that quit the monitor end, and no other test's: those run
    // beside this one.
    const QString identifier = QStringLiteral("org.example.Velq%1").arg(getpid());
    TestBundle bundle{identifier};
};

TEST_F(WorkspaceTest, EveryInstanceIsFoundAndAskedToEnd)
{
    const pid_t first = startAndAwait(bundle);
    const pid_t second = startAndAwait(bundle);
    const auto instances = instancesOf(bundle);
    ASSERT_EQ(instances.size(), 2);
    for (const RunningApplication &instance : instances) {
        EXPECT_EQ(instance.bundleIdentifier(), identifier);
        EXPECT_TRUE(instance.processIdentifier() == first
                    || instance.processIdentifier() == second);
        EXPECT_TRUE(instance.terminate());
    }
    EXPECT_TRUE(hasExited(first));
    EXPECT_TRUE(hasExited(second));
    EXPECT_EQ(bundle.log().count(QStringLiteral("terminated")), 2);
}

TEST_F(WorkspaceTest, ProgramsOutsideBundlesAreNoApplications)
{
    for (const RunningApplication &each : Workspace::runningApplications())
        EXPECT_NE(each.processIdentifier(), getpid());
}

TEST_F(WorkspaceTest, AnotherPersonsApplicationsAreNotAmongThem)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only root starts what is another's";
    const QByteArray program = bundle.program().toLocal8Bit();
    ASSERT_EQ(chmod(QFileInfo(bundle.path()).path().toLocal8Bit().constData(), 0755), 0);
    const pid_t pid = fork();
    if (pid == 0) {
        if (setuid(65534) == 0)
            execl(program.constData(), program.constData(), nullptr);
        _exit(127);
    }
    ASSERT_TRUE(waitUntil([&] { return bundle.processes().contains(pid); }));
    EXPECT_TRUE(instancesOf(bundle).isEmpty());
    kill(pid, SIGKILL);
    EXPECT_EQ(waitpid(pid, nullptr, 0), pid);
}

TEST_F(WorkspaceTest, OneThatHasEndedCannotBeAsked)
{
    const pid_t pid = startAndAwait(bundle);
    const auto instances = instancesOf(bundle);
    ASSERT_EQ(instances.size(), 1);
    kill(pid, SIGKILL);
    waitpid(pid, nullptr, 0);
    EXPECT_FALSE(instances[0].terminate());
    EXPECT_TRUE(instancesOf(bundle).isEmpty());
}

TEST_F(WorkspaceTest, AReplacedProgramIsStillItsBundles)
{
    const pid_t pid = startAndAwait(bundle);
    ASSERT_TRUE(QFile::remove(bundle.program()));
    const auto instances = instancesOf(bundle);
    ASSERT_EQ(instances.size(), 1);
    EXPECT_EQ(instances[0].bundleIdentifier(), identifier);
    EXPECT_TRUE(instances[0].terminate());
    EXPECT_TRUE(hasExited(pid));
}

TEST_F(WorkspaceTest, ADeletedBundleHasNoIdentifier)
{
    const pid_t pid = startAndAwait(bundle);
    ASSERT_TRUE(QDir(bundle.path()).removeRecursively());
    const auto instances = instancesOf(bundle);
    ASSERT_EQ(instances.size(), 1);
    EXPECT_TRUE(instances[0].bundleIdentifier().isNull());
    EXPECT_TRUE(instances[0].terminate());
    EXPECT_TRUE(hasExited(pid));
}

TEST_F(WorkspaceTest, OpeningStartsTheProgramOnItsOwn)
{
    // As in a program that waits for these signals by a descriptor.
    sigset_t ending;
    sigemptyset(&ending);
    sigaddset(&ending, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &ending, nullptr);
    EXPECT_TRUE(Workspace::launchApplication(bundle.path()));
    pthread_sigmask(SIG_UNBLOCK, &ending, nullptr);
    ASSERT_TRUE(waitUntil([&] { return !bundle.log().isEmpty(); }));
    EXPECT_EQ(bundle.log(), QStringList{QStringLiteral("opened")});
    const auto instances = instancesOf(bundle);
    ASSERT_EQ(instances.size(), 1);
    const auto pid = static_cast<pid_t>(instances[0].processIdentifier());
    EXPECT_NE(getsid(pid), getsid(0));
    EXPECT_EQ(waitpid(pid, nullptr, WNOHANG), -1);
    instances[0].terminate();
    EXPECT_TRUE(waitUntil([&] { return bundle.log().contains(QStringLiteral("terminated")); }));
}

TEST_F(WorkspaceTest, OpeningWhatRunsBringsItForward)
{
    ASSERT_TRUE(Workspace::launchApplication(bundle.path()));
    ASSERT_TRUE(waitUntil([&] { return !bundle.log().isEmpty(); }));
    EXPECT_TRUE(Workspace::launchApplication(bundle.path()));
    EXPECT_TRUE(waitUntil([&] { return bundle.log().contains(QStringLiteral("activated")); }));
    EXPECT_EQ(bundle.processes().size(), 1);
}

TEST_F(WorkspaceTest, WhatDoesNotLetItselfBeBroughtForwardIsNotStartedTwice)
{
    unsetenv("DISPLAY");
    const QByteArray bus = qgetenv("DBUS_SESSION_BUS_ADDRESS");
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
    const pid_t pid = startAndAwait(bundle);
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus);
    EXPECT_FALSE(Workspace::launchApplication(bundle.path()));
    EXPECT_EQ(bundle.processes(), QList<pid_t>{pid});
    kill(pid, SIGKILL);
    waitpid(pid, nullptr, 0);
}

// By a tool that lives on when it has been started, like any application.
TEST_F(WorkspaceTest, APageIsOpenedByTheDesktopsTool)
{
    const velq::testing::FakeTools tools;
    const QString told = tools.path(QStringLiteral("told"));
    tools.add(QStringLiteral("xdg-open"),
              "echo \"$# $1 $$\" >'" + told.toLocal8Bit() + ".part'; mv '" + told.toLocal8Bit()
                  + ".part' '" + told.toLocal8Bit() + "'; exec sleep 60");
    EXPECT_TRUE(Workspace::openURL(QStringLiteral("https://www.example.org/a b?c=$HOME")));
    ASSERT_TRUE(waitUntil([&] { return QFile::exists(told); }));
    QFile file(told);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArrayList words = file.readAll().trimmed().split(' ');
    const auto pid = words.last().toInt();
    EXPECT_EQ(words.first(words.size() - 1).join(' '), "1 https://www.example.org/a b?c=$HOME");
    ASSERT_GT(pid, 1);
    EXPECT_NE(getsid(pid), getsid(0));
    EXPECT_EQ(waitpid(pid, nullptr, WNOHANG), -1);
    EXPECT_EQ(kill(pid, SIGKILL), 0);
}

TEST_F(WorkspaceTest, WithoutSuchAToolNoPageIsOpened)
{
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", runtime.path().toLocal8Bit());
    EXPECT_FALSE(Workspace::openURL(QStringLiteral("https://www.example.org")));
    qputenv("PATH", path);
}

TEST_F(WorkspaceTest, WhatIsNoApplicationIsNotOpened)
{
    EXPECT_FALSE(Workspace::launchApplication(QString()));
    EXPECT_FALSE(Workspace::launchApplication(QStringLiteral("/nonexistent/Velq.app")));
    EXPECT_FALSE(Workspace::launchApplication(runtime.path()));
    ASSERT_TRUE(QFile::setPermissions(bundle.program(), QFile::ReadOwner));
    EXPECT_FALSE(Workspace::launchApplication(bundle.path()));
    EXPECT_TRUE(bundle.processes().isEmpty());
}

} // namespace
