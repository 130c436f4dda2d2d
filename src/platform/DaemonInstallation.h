#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace velq
{

/// What an installation of the root daemon has left on this computer, as its files tell it. Root's
/// rights are not needed to look; the daemon is not asked. A value; any thread.
struct DaemonInstallation {
    bool installed = false;        ///< there is anything of it
    QStringList faulty;            ///< its files that are missing or not as they were installed
    std::optional<qint64> version; ///< none when nothing says so
    bool granted = false;          ///< it is there for the person who runs this program, too

    bool isComplete() const { return installed && faulty.isEmpty(); }

    /// Looks now, below the folder `root`.
    static DaemonInstallation found(const QString &root = {});
};

} // namespace velq
