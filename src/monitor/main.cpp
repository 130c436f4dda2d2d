#include "monitor/AppDelegate.h"
#include "monitor/MainInterface.h"
#include "monitor/MonitorOptions.h"
#include "monitor/console/ConsoleKeyboard.h"
#include "monitor/console/ConsoleNotificationCenter.h"
#include "monitor/console/ConsoleStatusBar.h"
#include "monitor/tray/TrayStatusBar.h"
#include "platform/Bundle.h"
#include "platform/Display.h"
#include "platform/DistributedNotificationCenter.h"
#include "platform/GlobalQueue.h"
#include "platform/ServiceProcess.h"
#include "platform/SilentBuses.h"
#include "platform/SingleInstance.h"
#include "platform/StandardStreams.h"
#include "platform/TerminationSignals.h"
#include "platform/ToolPath.h"

#include <QApplication>
#include <QEventLoop>
#include <QTimer>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <memory>

namespace
{

using namespace velq;
using namespace std::chrono_literals;
using Request = MonitorOptions::Request;

constexpr int wrongUse = 2;
const auto identifier = QStringLiteral("com.zelmor.Monitor");

void print(FILE *stream, const QString &text)
{
    const QByteArray bytes = text.toLocal8Bit();
    (void)std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stream);
}

// What a library has to complain about is no concern of the person in front of the screen.
void dropLibraryMessages(QtMsgType, const QMessageLogContext &, const QString &)
{
}

// Runs until somebody quits; the return value is the exit status.
int runDelegate(MainInterface &interface, StatusBar &statusBar,
                UserNotificationCenter &notifications)
{
    DistributedNotificationCenter distributed;
    AppDelegate delegate({statusBar, notifications, distributed});
    interface.connectOutlets(delegate);
    const TerminationSignals signals;
    QObject::connect(&signals, &TerminationSignals::received, &QCoreApplication::quit);
    delegate.applicationDidFinishLaunching();
    const int status = QCoreApplication::exec();
    delegate.applicationWillTerminate();
    return status;
}

int runInConsole()
{
    ConsoleOutput output;
    QObject::connect(&output, &ConsoleOutput::failed, &QCoreApplication::quit);
    MainInterface interface;
    const ConsoleKeyboard keyboard(interface.menu(), output);
    ConsoleStatusBar statusBar(output);
    ConsoleNotificationCenter notifications(output);
    return runDelegate(interface, statusBar, notifications);
}

// False when the process is asked to end meanwhile.
bool waitForClaim(SingleInstance &instance)
{
    QEventLoop loop;
    const TerminationSignals signals;
    QObject::connect(&signals, &TerminationSignals::received, &loop, [&] { loop.exit(1); });
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &loop, [&] {
        if (instance.claim(identifier))
            loop.exit(0);
    });
    timer.start(5s);
    return loop.exec() == 0;
}

int runOnce(int (*run)())
{
    SingleInstance instance;
    if (instance.claim(identifier))
        return run();
    // One that ended here would be started again at once, for as long as the other one runs.
    if (startedByServiceManager())
        return waitForClaim(instance) ? run() : EXIT_SUCCESS;
    print(stderr, QStringLiteral("velq-monitor: the monitor is already running in this session\n"));
    return EXIT_SUCCESS;
}

int runInTray()
{
    MainInterface interface;
    TrayStatusBar statusBar;
    DesktopNotificationCenter notifications;
    return runDelegate(interface, statusBar, notifications);
}

std::unique_ptr<QCoreApplication> makeApplication(bool inTerminal, int &argc, char **argv)
{
    if (inTerminal)
        return std::make_unique<QCoreApplication>(argc, argv);
    auto application = std::make_unique<QApplication>(argc, argv);
    QApplication::setApplicationDisplayName(QStringLiteral("Velq"));
    QApplication::setQuitOnLastWindowClosed(false);
    return application;
}

int start(bool inTerminal, int &argc, char **argv)
{
    qInstallMessageHandler(dropLibraryMessages);
    (void)std::signal(SIGPIPE, SIG_IGN);
    leaveOutSilentBuses();
    TerminationSignals::block();
    ToolPath::addHelpersToEnvironment(Bundle::mainBundle().helperPath());
    const auto application = makeApplication(inTerminal, argc, argv);
    const int status = runOnce(inTerminal ? runInConsole : runInTray);
    // A command that hangs must not keep the program from ending.
    if (!GlobalQueue::isIdle())
        std::_Exit(status);
    return status;
}

} // namespace

int main(int argc, char **argv)
{
    fillClosedStandardStreams();
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    const MonitorOptions options = MonitorOptions::parse(arguments);
    switch (options.request) {
    case Request::ShowHelp:
        print(stdout, MonitorOptions::help());
        return EXIT_SUCCESS;
    case Request::ShowVersion:
        print(stdout, QStringLiteral("velq-monitor " VELQ_VERSION "\n"));
        return EXIT_SUCCESS;
    case Request::Refuse:
        print(stderr,
              QStringLiteral("velq-monitor: unknown argument '%1'\n%2\n")
                  .arg(options.unknown, MonitorOptions::usage()));
        return wrongUse;
    default:
        return start(options.request == Request::RunInConsole || !displayIsAvailable(), argc, argv);
    }
}
