#include "shell/ShellUtl.h"

#include "shell/CommandLine.h"
#include "shell/process/ChildProcess.h"
#include "support/FakeTool.h"
#include "support/Waiting.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QThread>
#include <gtest/gtest.h>

#include <atomic>
#include <csignal>
#include <sys/syscall.h>
#include <thread>
#include <unistd.h>

namespace
{

using namespace velq;
using velq::testing::FakeTools;
using velq::testing::waitUntil;

const QString shell = QStringLiteral("/bin/sh");

QString run(const QString &commandLine)
{
    return ShellUtl::runShell(shell, {QStringLiteral("-c"), commandLine});
}

TEST(ShellUtlTest, NothingPrintedIsTheEmptyTextNotNone)
{
    const QString output = run(QStringLiteral("true"));
    EXPECT_FALSE(output.isNull());
    EXPECT_TRUE(output.isEmpty());
}

TEST(ShellUtlTest, TheFinalNewlineIsKept)
{
    EXPECT_EQ(run(QStringLiteral("echo a; echo b")), QStringLiteral("a\nb\n"));
}

TEST(CommandLineTest, AQuotedWordIsWhatTheCommandGets)
{
    for (const char *text : {"Wi-Fi", "", "Joe's", "''", "a b\nc", "$(false)`false`;*\\\"", "网"}) {
        const QString word = QString::fromUtf8(text);
        EXPECT_EQ(outputOf(QStringLiteral("printf '<%s>' ") + quotedWord(word)),
                  u'<' + word + u'>');
    }
}

TEST(CommandLineTest, AWordToReadIsQuotedWhereItMustBe)
{
    for (const char *word : {"Ethernet", "Wi-Fi", "802.1/X_y"})
        EXPECT_EQ(typedWord(QString::fromUtf8(word)), QString::fromUtf8(word));
    EXPECT_EQ(typedWord(QStringLiteral("USB LAN")), QStringLiteral("'USB LAN'"));
    EXPECT_EQ(typedWord(QStringLiteral("Joe's")), QStringLiteral("'Joe'\\''s'"));
    for (const char *word : {"", "a;b", "a\n", "$a", "Wi-Fi\n", "网"})
        EXPECT_EQ(typedWord(QString::fromUtf8(word)), quotedWord(QString::fromUtf8(word)));
}

TEST(ShellUtlTest, AFailingCommandsOutputIsReturnedAllTheSame)
{
    EXPECT_EQ(run(QStringLiteral("echo out; exit 3")), QStringLiteral("out\n"));
    EXPECT_EQ(run(QStringLiteral("echo out; kill -9 $$")), QStringLiteral("out\n"));
}

TEST(ShellUtlTest, InvalidUtf8IsNothing)
{
    EXPECT_TRUE(run(QStringLiteral("printf 'a\\377'")).isNull());
    EXPECT_EQ(run(QStringLiteral("printf '\\347\\275\\221'")), QStringLiteral("网"));
}

TEST(ShellUtlTest, WhatCannotBeLaunchedThrowsAnInvalidArgument)
{
    EXPECT_THROW((void)ShellUtl::runShell(QStringLiteral("/no/such"), {}), std::invalid_argument);
    EXPECT_THROW(ShellUtl::runShell(QStringLiteral("/no/such"), {}, {}), std::invalid_argument);
}

// Standard error and standard input are the caller's own: both ends are swapped for files here.
class ShellUtlInheritanceTest : public ::testing::Test
{
protected:
    void replace(int descriptor, const QString &path, QIODevice::OpenMode mode)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(mode));
        kept = dup(descriptor);
        ASSERT_GE(dup2(file.handle(), descriptor), 0);
        replaced = descriptor;
    }
    void restore() const
    {
        dup2(kept, replaced);
        close(kept);
    }

    QTemporaryDir folder;
    int kept = -1;
    int replaced = -1;
};

TEST_F(ShellUtlInheritanceTest, StandardErrorIsTheCallersAndNoPartOfTheResult)
{
    const QString path = folder.filePath(QStringLiteral("err"));
    replace(STDERR_FILENO, path, QIODevice::WriteOnly);
    const QString output = run(QStringLiteral("echo complaint >&2; echo out"));
    restore();
    EXPECT_EQ(output, QStringLiteral("out\n"));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), "complaint\n");
}

TEST_F(ShellUtlInheritanceTest, StandardInputIsTheCallers)
{
    const QString path = folder.filePath(QStringLiteral("in"));
    QFile input(path);
    ASSERT_TRUE(input.open(QIODevice::WriteOnly));
    input.write("from the caller\n");
    input.close();
    replace(STDIN_FILENO, path, QIODevice::ReadOnly);
    const QString output = run(QStringLiteral("cat"));
    restore();
    EXPECT_EQ(output, QStringLiteral("from the caller\n"));
}

TEST(ShellUtlTest, APipefulIsReturnedWhole)
{
    EXPECT_EQ(run(QStringLiteral("head -c 65536 /dev/zero | tr '\\0' x")).size(), 65536);
}

bool isBlockedInWrite(const QByteArray &pid)
{
    QFile call(QStringLiteral("/proc/%1/syscall").arg(QString::fromLatin1(pid)));
    return call.open(QIODevice::ReadOnly)
        && call.readAll().startsWith(QByteArray::number(SYS_write) + ' ');
}

// The output is read after the exit only, so one that is larger than the pipe blocks the child.
TEST(ShellUtlTest, MoreThanAPipefulBlocksTheChild)
{
    const QTemporaryDir folder;
    const QString pidFile = folder.filePath(QStringLiteral("pid"));
    const QString line =
        QStringLiteral("echo $$ > '%1.part'; mv '%1.part' '%1'; exec head -c 65537 /dev/zero");
    std::atomic<qsizetype> length = -1;
    std::thread caller([&] { length = run(line.arg(pidFile)).size(); });
    ASSERT_TRUE(waitUntil([&] { return QFileInfo::exists(pidFile); }));
    QFile file(pidFile);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray pid = file.readAll().trimmed();

    EXPECT_TRUE(waitUntil([&] { return isBlockedInWrite(pid); }));
    EXPECT_EQ(length, -1);
    kill(pid.toInt(), SIGKILL);
    caller.join();
    EXPECT_EQ(length, 65536);
}

TEST(ShellUtlTest, AProcessLeftBehindDoesNotHoldTheCaller)
{
    const QString output = run(QStringLiteral("echo first; sleep infinity & echo $!"));
    const QStringList lines = output.split(QLatin1Char('\n'));
    ASSERT_EQ(lines.size(), 3);
    EXPECT_EQ(lines[0], QStringLiteral("first"));
    EXPECT_EQ(kill(lines[1].toInt(), SIGKILL), 0);
}

TEST(ShellUtlTest, CallsFromSeveralThreadsAreIndependent)
{
    std::vector<std::thread> callers;
    callers.reserve(8);
    std::atomic<int> right = 0;
    for (int i = 0; i < 8; ++i) {
        callers.emplace_back([&, i] {
            if (run(QStringLiteral("echo %1").arg(i)) == QStringLiteral("%1\n").arg(i))
                ++right;
        });
    }
    for (std::thread &caller : callers)
        caller.join();
    EXPECT_EQ(right, 8);
}

TEST(ShellUtlTest, ToolsOfTheVocabularyAreFoundOnThePath)
{
    FakeTools tools;
    tools.addPrinting(QStringLiteral("netstat"), "faked\n");
    EXPECT_EQ(ShellUtl::runShell(QStringLiteral("/usr/sbin/netstat"), {QStringLiteral("-nr")}),
              QStringLiteral("faked\n"));
    EXPECT_EQ(tools.log(), "netstat -nr\n");
}

struct Completed {
    std::atomic<int> calls = 0;
    std::shared_ptr<OutputAccumulator> output;
    std::atomic<QThread *> thread = nullptr;

    ShellUtl::Completion completion()
    {
        return [this](const std::shared_ptr<OutputAccumulator> &accumulator) {
            output = accumulator;
            thread = QThread::currentThread();
            ++calls;
        };
    }
};

void runAsync(const QString &commandLine, Completed &completed)
{
    ShellUtl::runShell(shell, {QStringLiteral("-c"), commandLine}, completed.completion());
}

TEST(ShellUtlAsyncTest, ReturnsBeforeTheChildEndsAndCompletesOnce)
{
    const QTemporaryDir folder;
    const QString gate = folder.filePath(QStringLiteral("gate"));
    Completed completed;
    runAsync(QStringLiteral("mkfifo '%1'; echo before; cat '%1'; echo after").arg(gate), completed);
    EXPECT_EQ(completed.calls, 0);
    ASSERT_TRUE(waitUntil([&] { return QFileInfo::exists(gate); }));
    QFile opened(gate);
    ASSERT_TRUE(opened.open(QIODevice::WriteOnly));
    opened.write("through\n");
    opened.close();
    ASSERT_TRUE(waitUntil([&] { return completed.calls > 0; }));
    EXPECT_EQ(completed.output->text(), QStringLiteral("before\nthrough\nafter\n"));
    EXPECT_NE(completed.thread, QThread::currentThread());
    EXPECT_EQ(completed.calls, 1);
}

TEST(ShellUtlAsyncTest, AChildThatIsGoneAtOnceCompletesOnce)
{
    for (int i = 0; i < 50; ++i) {
        Completed completed;
        ShellUtl::runShell(QStringLiteral("/bin/true"), {}, completed.completion());
        ASSERT_TRUE(waitUntil([&] { return completed.calls > 0; }));
        EXPECT_EQ(completed.calls, 1);
        EXPECT_EQ(completed.output->text(), QStringLiteral(""));
    }
}

TEST(ShellUtlAsyncTest, TheEndOfTheOutputIsNotTheExit)
{
    const QTemporaryDir folder;
    const QString gate = folder.filePath(QStringLiteral("gate"));
    std::atomic<bool> ended = false;
    std::atomic<int> calls = 0;
    ShellUtl::runShell(
        shell,
        {QStringLiteral("-c"),
         QStringLiteral("exec >&-; mkfifo '%1'; read -r line <'%1'; : >'%1.passed'").arg(gate)},
        [&](const std::shared_ptr<OutputAccumulator> &) {
            ended = QFileInfo::exists(gate + QStringLiteral(".passed"));
            ++calls;
        });
    ASSERT_TRUE(waitUntil([&] { return QFileInfo::exists(gate); }));
    QFile opened(gate);
    ASSERT_TRUE(opened.open(QIODevice::WriteOnly));
    opened.write("through\n");
    opened.close();
    ASSERT_TRUE(waitUntil([&] { return calls > 0; }));
    EXPECT_TRUE(ended);
}

TEST(ShellUtlAsyncTest, CollectsMoreThanAPipeful)
{
    Completed completed;
    runAsync(QStringLiteral("head -c 300000 /dev/zero | tr '\\0' x"), completed);
    ASSERT_TRUE(waitUntil([&] { return completed.calls > 0; }));
    EXPECT_EQ(completed.output->text().size(), 300000);
}

TEST(ShellUtlAsyncTest, APieceThatIsNoUtf8AddsNothing)
{
    Completed completed;
    runAsync(QStringLiteral("printf '\\377'"), completed);
    ASSERT_TRUE(waitUntil([&] { return completed.calls > 0; }));
    EXPECT_EQ(completed.output->text(), QStringLiteral(""));
}

TEST(ShellUtlAsyncTest, WhatComesAfterTheExitIsAppendedToTheSameObject)
{
    const QTemporaryDir folder;
    const QString gate = folder.filePath(QStringLiteral("gate"));
    Completed completed;
    runAsync(QStringLiteral("mkfifo '%1'; echo early; { cat '%1'; } & exit 0").arg(gate),
             completed);
    ASSERT_TRUE(waitUntil([&] { return completed.calls > 0; }));
    EXPECT_EQ(completed.output->text(), QStringLiteral("early\n"));
    QFile opened(gate);
    ASSERT_TRUE(opened.open(QIODevice::WriteOnly));
    opened.write("late\n");
    opened.close();
    EXPECT_TRUE(
        waitUntil([&] { return completed.output->text() == QStringLiteral("early\nlate\n"); }));
    EXPECT_EQ(completed.calls, 1);
}

} // namespace
