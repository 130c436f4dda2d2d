#pragma once

#include <QString>
#include <QStringList>

namespace velq
{

/// Administrator rights for one run of one script, after the system has asked the person for them.
/// On Linux by polkit's `pkexec`, found on PATH.
class AdministratorRights
{
public:
    enum class Outcome {
        Done,
        /// The person dismissed the prompt; nothing was started.
        Cancelled,
        /// Everything else: the password was wrong, nobody could ask for it, the script failed.
        Failed,
    };

    struct Result {
        Outcome outcome = Outcome::Failed;
        /// What the system or the script said to it; null when nothing.
        QString message;
    };

    /// A script that root runs, of which this program knows nothing but what it must be.
    struct Script {
        /// The text for root's shell that checks the script and runs it. The first line that it
        /// prints is "started".
        QString bootstrap;
        QString digest;
        QString path;
        QStringList arguments;
    };

    /// Runs the script; blocks until it has ended or the prompt is gone. Any thread. Nothing of the
    /// environment reaches it, and its standard input is empty.
    static Result run(const Script &script);
};

} // namespace velq
