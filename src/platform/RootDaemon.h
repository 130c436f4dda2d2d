#pragma once

#include <QString>
#include <QStringList>

#include <memory>
#include <stdexcept>

namespace velq
{

/// A message to the root daemon that was refused, or whose answer never came; what() is the
/// description, in UTF-8. Whether the command has run is not known.
class RootDaemonError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// The object that the root daemon vends on this computer under the name "VelqDamonObject", seen
/// from a person's program. On Linux over the system bus, which starts the daemon when it is not
/// running.
///
/// A proxy has a connection of its own and is for one call: look it up afresh for the next. Any
/// thread; one thread at a time for one proxy. Every operation blocks.
class RootDaemon
{
public:
    /// The proxy of the object that the daemon vends; null when nobody vends it, or somebody who is
    /// not root. Nothing has been sent to anybody but the bus then.
    static std::unique_ptr<RootDaemon> rootProxy();

    RootDaemon(const RootDaemon &) = delete;
    RootDaemon &operator=(const RootDaemon &) = delete;
    ~RootDaemon();

    /// Whether the object answers the message `runShell`; no when it does not answer at all.
    bool respondsToRunShell();

    /// Sends `runShell` and waits for its reply, the standard output of the command that root ran.
    /// The person may be asked for a password meanwhile. Throws RootDaemonError.
    QString runShell(const QString &launchPath, const QStringList &arguments);

private:
    class Connection;

    explicit RootDaemon(std::unique_ptr<Connection> connection);

    std::unique_ptr<Connection> m_connection;
};

} // namespace velq
