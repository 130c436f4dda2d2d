#include "shell/ShellUtl.h"

#include "common/Text.h"
#include "platform/GlobalQueue.h"
#include "platform/ToolPath.h"
#include "shell/process/ChildProcess.h"

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

} // namespace velq
