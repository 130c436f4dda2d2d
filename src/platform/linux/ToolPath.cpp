#include "platform/ToolPath.h"

#include <QFileInfo>
#include <QStandardPaths>
#include <QStringList>

#include <algorithm>
#include <array>

namespace velq
{

namespace
{

const QStringList &systemFolders()
{
    static const QStringList folders{
        QStringLiteral("/usr/local/sbin"), QStringLiteral("/usr/local/bin"),
        QStringLiteral("/usr/sbin"),       QStringLiteral("/usr/bin"),
        QStringLiteral("/sbin"),           QStringLiteral("/bin"),
    };
    return folders;
}

// Debian's own tools at these places print other texts than the vocabulary's, or there are none.
constexpr std::array mapped{
    QLatin1String("/System/Library/PrivateFrameworks/Apple80211.framework/Versions/Current/"
                  "Resources/airport"),
    QLatin1String("/usr/sbin/netstat"),
    QLatin1String("/usr/sbin/arp"),
};

} // namespace

QString ToolPath::withHelpers(const QString &searchPath, const QString &folder)
{
    QStringList folders = searchPath.split(QLatin1Char(':'), Qt::SkipEmptyParts);
    if (folders.contains(folder))
        return searchPath;
    const auto isSystem = [](const QString &each) {
        return systemFolders().contains(each);
    };
    folders.insert(std::ranges::find_if(folders, isSystem), folder);
    return folders.join(QLatin1Char(':'));
}

void ToolPath::addHelpersToEnvironment(const QString &folder)
{
    const QString before = qEnvironmentVariable("PATH", systemFolders().join(QLatin1Char(':')));
    qputenv("PATH", withHelpers(before, folder).toLocal8Bit());
}

QString ToolPath::resolved(const QString &launchPath)
{
    if (std::ranges::find(mapped, launchPath) == mapped.end())
        return launchPath;
    const QString tool = QStandardPaths::findExecutable(QFileInfo(launchPath).fileName());
    return tool.isEmpty() ? launchPath : tool;
}

} // namespace velq
