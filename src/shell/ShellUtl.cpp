#include "shell/ShellUtl.h"

#include "common/Log.h"
#include "common/Text.h"
#include "platform/GlobalQueue.h"
#include "platform/RootDaemon.h"
#include "platform/ToolPath.h"
#include "shell/DaemonInstaller.h"
#include "shell/process/ChildProcess.h"

#include <atomic>
#include <chrono>
#include <thread>

namespace velq
{

namespace
{

using process::ChildProcess;

std::unique_ptr<ChildProcess> launched(const QString &launchPath, const QStringList &arguments)
{
    std::vector<std::string> vector;
    for (const QString &argument : arguments)
        vector.push_back(argument.toStdString());
    return std::make_unique<ChildProcess>(ToolPath::resolved(launchPath).toStdString(), vector);
}

void collect(ChildProcess &child, const std::shared_ptr<OutputAccumulator> &output,
             const ShellUtl::Completion &complete)
{
    while (child.waitForEvent() == ChildProcess::Event::Output)
        output->append(decodedUtf8(child.readAvailable()));
    child.waitUntilExit();
    complete(output);
    for (std::string late = child.readAvailable(); !late.empty(); late = child.readAvailable())
        output->append(decodedUtf8(late));
}

// What a new daemon gets before it is asked.
constexpr std::chrono::seconds settlingTime{1};

QString answer(RootDaemon &daemon, const QString &launchPath, const QStringList &arguments)
try {
    return daemon.runShell(launchPath, arguments);
} catch (const RootDaemonError &error) {
    log(QString::fromUtf8(error.what()));
    return {};
}

} // namespace

QString ShellUtl::runShell(const QString &launchPath, const QStringList &arguments)
{
    const auto child = launched(launchPath, arguments);
    child->waitUntilExit();
    return decodedUtf8(child->readAvailable());
}

void ShellUtl::runShell(const QString &launchPath, const QStringList &arguments,
                        Completion complete)
{
    // The task watches for the exit from before it can happen unseen: an exited child stays
    // waitable.
    const std::shared_ptr<ChildProcess> child = launched(launchPath, arguments);
    GlobalQueue::async([child, complete = std::move(complete)] {
        collect(*child, std::make_shared<OutputAccumulator>(), complete);
    });
}

QString ShellUtl::runShellWithDemone(const QString &launchPath, const QStringList &arguments)
{
    static std::atomic<bool> installationAttempted = false;
    const auto proxy = RootDaemon::rootProxy();
    if (proxy != nullptr && proxy->respondsToRunShell())
        return answer(*proxy, launchPath, arguments);
    if (installationAttempted || DaemonInstaller::installDaemon())
        return {};
    installationAttempted = true;
    std::this_thread::sleep_for(settlingTime);
    // The command is carried out; its output goes to those who ask from now on.
    (void)runShellWithDemone(launchPath, arguments);
    return {};
}

} // namespace velq
