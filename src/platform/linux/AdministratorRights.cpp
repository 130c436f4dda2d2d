#include "platform/AdministratorRights.h"

#include <QProcess>

#include <csignal>

namespace velq
{

namespace
{

using Outcome = AdministratorRights::Outcome;

// What pkexec ends with when the person dismissed the prompt. It stands for nothing as long as the
// script may have ended with it.
constexpr int dismissed = 126;

// Left as they are here they could not end what root runs.
void unblockSignals()
{
    sigset_t none;
    sigemptyset(&none);
    (void)sigprocmask(SIG_SETMASK, &none, nullptr);
}

// pkexec takes over some of its caller's variables, and refuses to run when it dislikes a value.
QProcessEnvironment minimalEnvironment()
{
    QProcessEnvironment environment;
    environment.insert(QStringLiteral("PATH"), QStringLiteral("/usr/sbin:/usr/bin:/sbin:/bin"));
    return environment;
}

Outcome outcome(const QProcess &process, bool started)
{
    if (process.exitStatus() != QProcess::NormalExit)
        return Outcome::Failed;
    if (started)
        return process.exitCode() == 0 ? Outcome::Done : Outcome::Failed;
    return process.exitCode() == dismissed ? Outcome::Cancelled : Outcome::Failed;
}

QStringList commandLine(const AdministratorRights::Script &script)
{
    // Its own agent would ask in whatever terminal the program was started from.
    const QStringList words{QStringLiteral("--disable-internal-agent"),
                            QStringLiteral("/bin/sh"),
                            QStringLiteral("-c"),
                            script.bootstrap,
                            QStringLiteral("velq-install"),
                            script.digest,
                            script.path};
    return words + script.arguments;
}

QString textOrNull(const QByteArray &bytes)
{
    const QString text = QString::fromUtf8(bytes).trimmed();
    return text.isEmpty() ? QString() : text;
}

} // namespace

AdministratorRights::Result AdministratorRights::run(const Script &script)
{
    QProcess process;
    process.setProcessEnvironment(minimalEnvironment());
    process.setStandardInputFile(QProcess::nullDevice());
    process.setChildProcessModifier(unblockSignals);
    process.start(QStringLiteral("pkexec"), commandLine(script));
    if (!process.waitForStarted(-1))
        return {Outcome::Failed, process.errorString()};
    process.waitForFinished(-1);
    const bool started = process.readAllStandardOutput().startsWith("started\n");
    return {outcome(process, started), textOrNull(process.readAllStandardError())};
}

} // namespace velq
