#pragma once

#include "shell/OutputAccumulator.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

namespace velq
{

/// Runs command-line tools and gets their standard output back as text. No instances, no state;
/// every operation may be called from any thread.
///
/// Standard input and standard error are the caller's own, but for what root runs. Exit statuses
/// are not looked at.
class ShellUtl
{
public:
    ShellUtl() = delete;

    /// Runs the program at `launchPath` and blocks until it has exited; only then reads its
    /// standard output, once. The text is never trimmed; null when it is not valid UTF-8.
    ///
    /// A program that prints more than a pipe holds (64 KiB) never exits and blocks the caller.
    /// Throws process::LaunchError (a std::invalid_argument) when the program cannot be started.
    static QString runShell(const QString &launchPath, const QStringList &arguments);

    /// Told once, after the program's exit, on a thread of the runner's choice. What a process that
    /// outlives the program still prints may come into the accumulator later.
    using Completion = std::function<void(const std::shared_ptr<OutputAccumulator> &output)>;

    /// Starts the program and returns. Its output is collected piece by piece as it comes in; a
    /// piece that is not valid UTF-8 adds nothing. Throws process::LaunchError like the other.
    static void runShell(const QString &launchPath, const QStringList &arguments,
                         Completion complete);

    /// Has the root daemon run the program; blocks until its answer, the program's standard output,
    /// is there. Null when there is none.
    ///
    /// When no daemon answers it is installed, which asks the person for administrator rights, at
    /// most once in a process's life unless the person dismisses the prompt; the program is then
    /// run, but its output is not returned. An answer that failed is logged.
    static QString runShellWithDemone(const QString &launchPath, const QStringList &arguments);
};

} // namespace velq
