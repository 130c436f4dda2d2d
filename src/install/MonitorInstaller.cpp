#include "install/MonitorInstaller.h"

#include "common/Text.h"
#include "platform/Bundle.h"
#include "platform/BundleFiles.h"
#include "platform/LaunchAgents.h"
#include "platform/PropertyList.h"
#include "platform/PropertyValue.h"
#include "platform/UserDefaults.h"
#include "shell/DaemonInstaller.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cstdlib>

namespace velq
{

namespace
{

bool isInMonitorsBundle()
{
    return Bundle::mainBundle().bundleIdentifier() == QLatin1String("com.zelmor.Monitor");
}

QString existing(const QString &path)
{
    return QFileInfo::exists(path) ? path : QString();
}

QString agentFolder()
{
    return QDir::homePath() + QStringLiteral("/Library/LaunchAgents");
}

QString agentIn(const QString &folder)
{
    return folder + QStringLiteral("/com.zelmor.Monitor.plist");
}

QString supportFolder()
{
    return QStringLiteral("%1/Library/Application Support/%2/")
        .arg(QDir::homePath(),
             isInMonitorsBundle() ? QStringLiteral("Velq") : Bundle::runningApplicationName());
}

QString appIn(const QString &folder)
{
    return folder + QStringLiteral("VelqMonitor.app");
}

void makeFolder(const QString &path)
{
    if (!QFileInfo::exists(path))
        QDir().mkpath(path);
}

QVariant valueInAgent(const QString &path, const QString &key)
{
    return PropertyList::dictionaryFromFile(path).value_or(QVariantMap()).value(key);
}

void recordPath()
{
    UserDefaults &defaults = UserDefaults::standardUserDefaults();
    defaults.setObject(Bundle::mainBundle().bundlePath(), QStringLiteral("appPath"));
    defaults.synchronize();
}

// An agent that is not there is no error.
void unloadAndDelete(const QString &agent)
{
    if (agent.isNull())
        return;
    MonitorInstaller::launchctlApplicationInPath(agent, QStringLiteral("unload"));
    QFile::remove(agent);
}

} // namespace

void MonitorInstaller::installOrroMenuBar()
{
    recordPath();
    if (compareMiniVersionDecideIsReplace())
        replaceMini();
}

void MonitorInstaller::installOrroMenuBarWithForce()
{
    recordPath();
    replaceMini();
}

void MonitorInstaller::uninstallOrroMenuBar()
{
    const QString agent = miniLaunchAgentPath();
    const QString app = miniAppPath();
    const QVariant inAgent = valueInAgent(agent, QStringLiteral("Label"));
    const QString name = inAgent.isValid() ? inAgent.toString() : label();
    unloadAndDelete(agent);
    BundleFiles::remove(app);
    if (!name.isNull())
        forgetLaunchAgent(name);
}

bool MonitorInstaller::installDaemon()
{
    return DaemonInstaller::installDaemon();
}

MonitorInstaller::Installed MonitorInstaller::installed()
{
    return {existing(agentIn(agentFolder())), existing(appIn(supportFolder()))};
}

QString MonitorInstaller::launchAgentPath()
{
    QString path = agentFolder();
    makeFolder(path);
    return path;
}

QString MonitorInstaller::miniLaunchAgentPath()
{
    return existing(miniLaunchAgent());
}

QString MonitorInstaller::miniLaunchAgent()
{
    return agentIn(launchAgentPath());
}

void MonitorInstaller::launchctlApplicationInPath(const QString &path, const QString &option)
{
    if (!QFileInfo::exists(path))
        return;
    const QString line = QStringLiteral("launchctl %1 %2").arg(shown(option), shown(path));
    (void)std::system(line.toUtf8().constData());
}

qint64 MonitorInstaller::menubarVersion()
{
    return integerOfValue(
        Bundle::mainBundle().infoDictionary().value(QStringLiteral("CFBundleVersion")));
}

QString MonitorInstaller::pallidorPath()
{
    QString path = supportFolder();
    makeFolder(path);
    return path;
}

QString MonitorInstaller::miniAppPath()
{
    return existing(createdMiniAppPath());
}

QString MonitorInstaller::createdMiniAppPath()
{
    return appIn(pallidorPath());
}

QString MonitorInstaller::bundleMiniPath()
{
    const Bundle &bundle = Bundle::mainBundle();
    return isInMonitorsBundle()
        ? bundle.bundlePath()
        : bundle.pathForResource(QStringLiteral("VelqMonitor"), QStringLiteral("app"));
}

bool MonitorInstaller::compareMiniVersionDecideIsReplace()
{
    const QString agent = miniLaunchAgentPath();
    if (agent.isNull() || miniAppPath().isNull())
        return true;
    return menubarVersion() > integerOfValue(valueInAgent(agent, QStringLiteral("Version")));
}

void MonitorInstaller::replaceMini()
{
    const QString agent = miniLaunchAgentPath();
    const QString app = miniAppPath();
    unloadAndDelete(agent);
    if (!agent.isNull() && !app.isNull())
        BundleFiles::remove(app);
    if (!agent.isNull() || app.isNull())
        BundleFiles::copy(bundleMiniPath(), createdMiniAppPath());
    createMiniLaunchAgent();
}

QString MonitorInstaller::miniExePath()
{
    return Bundle(createdMiniAppPath()).executablePath();
}

QString MonitorInstaller::label()
{
    return Bundle(createdMiniAppPath()).bundleIdentifier();
}

void MonitorInstaller::createMiniLaunchAgent()
{
    const QString path = miniLaunchAgent();
    const QVariantMap agent{
        {QStringLiteral("KeepAlive"), true},
        {QStringLiteral("Label"), label()},
        {QStringLiteral("Version"), static_cast<quint64>(menubarVersion())},
        {QStringLiteral("Program"), miniExePath()},
    };
    PropertyList::writeDictionary(agent, path);
    launchctlApplicationInPath(path, QStringLiteral("load"));
}

} // namespace velq
