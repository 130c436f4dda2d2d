#include "cli/Help.h"
#include "cli/Interruption.h"
#include "cli/Invocation.h"
#include "cli/LastResults.h"
#include "cli/Misuse.h"
#include "cli/StoppedKeeper.h"
#include "common/Log.h"
#include "platform/Bundle.h"
#include "platform/GlobalQueue.h"
#include "platform/MainQueue.h"
#include "platform/SilentBuses.h"
#include "platform/StandardError.h"
#include "platform/StandardStreams.h"
#include "platform/TerminationSignals.h"
#include "platform/ToolPath.h"
#include "platform/UserDefaults.h"

#include <QCoreApplication>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <exception>
#include <optional>

namespace
{

using namespace velq;
using namespace velq::cli;
using Request = Invocation::Request;

void complain(const QString &why)
{
    log(QStringLiteral("velq: ") + why);
}

// A script must not take half an answer for a whole one.
ExitStatus printed(const QByteArray &bytes, ExitStatus status)
{
    const auto length = static_cast<size_t>(bytes.size());
    if (std::fwrite(bytes.constData(), 1, length, stdout) == length && std::fflush(stdout) == 0)
        return status;
    complain(QStringLiteral("standard output: %1").arg(QString::fromLocal8Bit(strerror(errno))));
    return Found;
}

ExitStatus printed(const QString &text)
{
    return printed(text.toUtf8(), Fine);
}

ExitStatus refuse(const Command *command, const QString &complaint)
{
    complain(complaint);
    StandardError::write(usage(command).toUtf8());
    return WrongUse;
}

QByteArray bytesOf(const Report &report, bool json)
{
    return !json               ? report.text.toUtf8()
        : report.json.isNull() ? QByteArray()
                               : report.json.toJson();
}

ExitStatus performed(const Invocation &invocation, Interruption &interruption)
try {
    const Command &command = *invocation.command;
    std::optional<StandardError::KeptFromChildren> alone;
    if (!invocation.arguments.verbose && !command.has(ToolsSpeak))
        alone.emplace();
    if (!invocation.arguments.json && command.has(NeedsKeeper))
        explainStoppedKeeper();
    const Report report = command.run(invocation.arguments, interruption);
    if (command.has(Kept) && !report.json.isNull())
        LastResults::keep(QString::fromLatin1(command.name), report.json);
    return printed(bytesOf(report, invocation.arguments.json), report.status);
} catch (const Misuse &misuse) {
    return refuse(invocation.command, QString::fromUtf8(misuse.what()));
} catch (const std::exception &error) {
    complain(QString::fromUtf8(error.what()));
    return Found;
}

// What a library has to complain about is no concern of the caller's.
void dropLibraryMessages(QtMsgType, const QMessageLogContext &, const QString &)
{
}

void interrupted(Interruption &interruption, int signal)
{
    if (interruption.isLeftTo(signal))
        return;
    complain(QStringLiteral("interrupted"));
    TerminationSignals::endBy(signal);
}

// A command that was asked to stop ends as one that was ended: a script stops there, too.
void end(const Interruption &interruption, ExitStatus status)
{
    if (const int signal = interruption.signal(); signal != 0)
        TerminationSignals::endBy(signal);
    QCoreApplication::exit(status);
}

int run(const Invocation &invocation, int &argc, char **argv)
{
    qInstallMessageHandler(dropLibraryMessages);
    leaveOutSilentBuses();
    TerminationSignals::block();
    // The choices of the person, wherever they were made.
    UserDefaults::setStandardDomain(QStringLiteral("com.zelmor.Velq"));
    ToolPath::addHelpersToEnvironment(Bundle::mainBundle().helperPath());
    const QCoreApplication application(argc, argv);
    const TerminationSignals signals;
    Interruption interruption;
    QObject::connect(&signals, &TerminationSignals::received,
                     [&interruption](int signal) { interrupted(interruption, signal); });
    GlobalQueue::async([&] {
        const ExitStatus status = performed(invocation, interruption);
        MainQueue::async([&interruption, status] { end(interruption, status); });
    });
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char **argv)
{
    fillClosedStandardStreams();
    (void)std::signal(SIGPIPE, SIG_IGN);
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    const Invocation invocation = Invocation::parse(arguments);
    switch (invocation.request) {
    case Request::ShowHelp:
        return printed(help(invocation.command));
    case Request::ShowVersion:
        return printed(QStringLiteral("velq " VELQ_VERSION "\n"));
    case Request::Refuse:
        return refuse(invocation.command, invocation.complaint);
    default:
        return run(invocation, argc, argv);
    }
}
