#pragma once

#include <QString>

#include <memory>

namespace velq
{

class ProcessHandle;

/// A program that ran out of an application bundle when it was looked at. A value; copies speak of
/// the same process, and never of another one that gets its number later. Any thread.
class RunningApplication
{
public:
    RunningApplication(qint64 pid, std::shared_ptr<const ProcessHandle> process,
                       const QString &executable);

    qint64 processIdentifier() const { return m_pid; }
    /// Null when the bundle has none, or is gone.
    QString bundleIdentifier() const { return m_identifier; }
    QString bundlePath() const { return m_path; }

    /// The polite request to end, which the program may answer in its own time. False when the
    /// process is gone.
    bool terminate() const;

private:
    qint64 m_pid;
    std::shared_ptr<const ProcessHandle> m_process;
    QString m_path;
    QString m_identifier;
};

} // namespace velq
