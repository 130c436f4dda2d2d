#include "common/CommonFunction.h"

#include "common/AirportOutput.h"
#include "common/PublicHosts.h"
#include "common/Reachability.h"
#include "common/Text.h"
#include "platform/Bundle.h"
#include "platform/DistributedNotificationCenter.h"
#include "platform/PropertyValue.h"
#include "platform/SystemVersion.h"
#include "platform/ToolPath.h"
#include "shell/process/ChildProcess.h"

#include <QDir>
#include <QStringList>

namespace velq
{

namespace
{

QString airportOutput()
{
    const QString airport =
        QStringLiteral("/System/Library/PrivateFrameworks/Apple80211.framework/Versions/Current/"
                       "Resources/airport");
    try {
        process::ChildProcess tool(ToolPath::resolved(airport).toStdString(), {"-I"});
        tool.waitUntilExit();
        return decodedUtf8(tool.readToEnd());
    } catch (const process::LaunchError &) {
        return {};
    }
}

} // namespace

int CommonFunction::wifiEnable()
{
    return wifiStateFrom(airportOutput());
}

bool CommonFunction::connectedToInternet()
{
    const auto reachability = Reachability::reachabilityWithHostName(publichosts::probe);
    return reachability != nullptr
        && reachability->currentReachabilityStatus() != NetworkNotReachable;
}

void CommonFunction::sendMessageToOtherApp(const QString &name, const QString &obj)
{
    DistributedNotificationCenter().post(name, obj);
}

QString CommonFunction::getHomePathByAppendSubPath(const QString &subPath)
{
    QString path = QDir::homePath();
    for (const QString &component : subPath.split(u'/', Qt::SkipEmptyParts)) {
        // A home that is the root ends in one already.
        if (!path.endsWith(u'/'))
            path += u'/';
        path += component;
    }
    return path;
}

QString CommonFunction::getProjectName()
{
    return Bundle::runningApplicationName();
}

QString CommonFunction::getProjectVersion()
{
    return Bundle::mainBundle().textForInfoDictionaryKey(
        QStringLiteral("CFBundleShortVersionString"));
}

QString CommonFunction::getProjectNameForHttpRequest()
{
    return QStringLiteral("velqmac");
}

qint64 CommonFunction::getOnlineUsersFlag()
{
    return integerOfValue(
        Bundle::mainBundle().infoDictionary().value(QStringLiteral("OnlineUsers")));
}

QString CommonFunction::getSystemVersionForUrl()
{
    const SystemVersion version = SystemVersion::current();
    return QStringLiteral("%1%2").arg(version.minorVersion).arg(version.patchVersion);
}

} // namespace velq
