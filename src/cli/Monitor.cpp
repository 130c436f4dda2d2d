#include "cli/Monitor.h"

#include "cli/Actions.h"
#include "install/MonitorInstaller.h"
#include "platform/Bundle.h"
#include "platform/LaunchAgents.h"
#include "platform/PropertyList.h"

#include <QFileInfo>

#include <stdexcept>

namespace velq::cli
{

namespace
{

QVariantMap agent()
{
    const QString file = MonitorInstaller::installed().agent;
    return file.isNull() ? QVariantMap()
                         : PropertyList::dictionaryFromFile(file).value_or(QVariantMap());
}

bool isInstalled()
{
    const auto [agent, app] = MonitorInstaller::installed();
    return !agent.isNull() && !app.isNull() && !Bundle(app).executablePath().isNull();
}

bool isPartlyInstalled()
{
    const auto [agent, app] = MonitorInstaller::installed();
    return !agent.isNull() || !app.isNull();
}

QString label()
{
    const QString inAgent = agent().value(QStringLiteral("Label")).toString();
    const QString app = MonitorInstaller::installed().app;
    return inAgent.isEmpty() && !app.isNull() ? Bundle(app).bundleIdentifier() : inAgent;
}

bool isRunning()
{
    const QString name = label();
    return !name.isEmpty() && launchAgentIsRunning(name);
}

void tellLaunchctl(const QString &option)
{
    MonitorInstaller::launchctlApplicationInPath(MonitorInstaller::miniLaunchAgentPath(), option);
}

Report told(const char *sentence, ExitStatus status)
{
    return {QString::fromUtf8(sentence) + u'\n', QJsonDocument(monitorRecord()), status};
}

Report notInstalled(ExitStatus status)
{
    return told("The monitor is not installed.", status);
}

// Its first step would remove what it is to copy.
void requireOtherBundle()
{
    const QString installed = QFileInfo(MonitorInstaller::createdMiniAppPath()).canonicalFilePath();
    if (QFileInfo(MonitorInstaller::bundleMiniPath()).canonicalFilePath() == installed)
        throw std::runtime_error("this is the installed monitor's own command; to install a "
                                 "monitor, call that of the application");
}

// Where the main application is, only that can tell: the path of it that is noted stays.
Report install()
{
    requireOtherBundle();
    if (MonitorInstaller::compareMiniVersionDecideIsReplace())
        MonitorInstaller::replaceMini();
    else if (!isRunning())
        tellLaunchctl(QStringLiteral("load"));
    if (!isInstalled())
        return told("The monitor could not be installed.", Found);
    return isRunning() ? told("The monitor is installed. It runs, and starts at each log-in.", Fine)
                       : told("The monitor is installed, but could not be started.", Found);
}

Report uninstall()
{
    if (!isPartlyInstalled())
        return notInstalled(Fine);
    MonitorInstaller::uninstallOrroMenuBar();
    return isPartlyInstalled() ? told("The monitor could not be removed.", Found)
                               : told("The monitor is removed.", Fine);
}

Report start()
{
    if (!isInstalled())
        return notInstalled(Found);
    tellLaunchctl(QStringLiteral("load"));
    return isRunning() ? told("The monitor runs.", Fine)
                       : told("The monitor could not be started.", Found);
}

Report stop()
{
    if (!isInstalled())
        return notInstalled(Fine);
    tellLaunchctl(QStringLiteral("unload"));
    return isRunning() ? told("The monitor could not be stopped.", Found)
                       : told("The monitor is stopped until the next log-in.", Fine);
}

constexpr Action actions[] = {
    {"install", install}, {"uninstall", uninstall}, {"start", start}, {"stop", stop}};

} // namespace

const Operand monitorAction{"ACTION", "install, uninstall, start or stop", namesOf<actions>};

Report monitor(const Arguments &arguments, Interruption & /*ends it*/)
{
    return performed(actions, arguments);
}

QJsonObject monitorRecord()
{
    const QVariant version = agent().value(QStringLiteral("Version"));
    return {{QStringLiteral("installed"), isInstalled()},
            {QStringLiteral("version"),
             version.isValid() ? QJsonValue(version.toLongLong()) : QJsonValue()},
            {QStringLiteral("running"), isRunning()}};
}

} // namespace velq::cli
