#include "cli/MissingRights.h"

#include "common/Log.h"
#include "platform/DaemonInstallation.h"
#include "platform/RootDaemon.h"

#include <QString>

namespace velq::cli
{

void explainMissingRights()
{
    const DaemonInstallation installation = DaemonInstallation::found();
    const bool isAnothers = installation.installed && !installation.granted;
    // One that is there and serves this person has said itself what it refuses.
    if (isAnothers || RootDaemon::rootProxy() == nullptr)
        log(QStringLiteral("velq: nothing could be changed as root: the helper that does it %1. "
                           "Try it at the computer's own screen, or with sudo.")
                .arg(isAnothers ? QStringLiteral("does not serve you")
                                : QStringLiteral("is not there")));
}

} // namespace velq::cli
