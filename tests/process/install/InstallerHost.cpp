#include "install/MonitorInstaller.h"

#include "common/Text.h"
#include "platform/Bundle.h"
#include "platform/ToolPath.h"

#include <QCoreApplication>
#include <QHash>

#include <cstdio>
#include <cstdlib>

namespace
{

using namespace velq;
using Installer = MonitorInstaller;

void print(const QString &text)
{
    std::puts(shown(text).toUtf8().constData());
}

const QHash<QString, void (*)()> operations{
    {QStringLiteral("installOrroMenuBar"), Installer::installOrroMenuBar},
    {QStringLiteral("installOrroMenuBarWithForce"), Installer::installOrroMenuBarWithForce},
    {QStringLiteral("uninstallOrroMenuBar"), Installer::uninstallOrroMenuBar},
    {QStringLiteral("replaceMini"), Installer::replaceMini},
    {QStringLiteral("createMiniLaunchAgent"), Installer::createMiniLaunchAgent},
    {QStringLiteral("launchAgentPath"),
     [] {
         print(Installer::launchAgentPath());
     }},
    {QStringLiteral("miniLaunchAgentPath"),
     [] {
         print(Installer::miniLaunchAgentPath());
     }},
    {QStringLiteral("miniLaunchAgent"),
     [] {
         print(Installer::miniLaunchAgent());
     }},
    {QStringLiteral("menubarVersion"),
     [] {
         print(QString::number(Installer::menubarVersion()));
     }},
    {QStringLiteral("pallidorPath"),
     [] {
         print(Installer::pallidorPath());
     }},
    {QStringLiteral("miniAppPath"),
     [] {
         print(Installer::miniAppPath());
     }},
    {QStringLiteral("createdMiniAppPath"),
     [] {
         print(Installer::createdMiniAppPath());
     }},
    {QStringLiteral("bundleMiniPath"),
     [] {
         print(Installer::bundleMiniPath());
     }},
    {QStringLiteral("compareMiniVersionDecideIsReplace"),
     [] {
         print(QVariant(Installer::compareMiniVersionDecideIsReplace()).toString());
     }},
    {QStringLiteral("miniExePath"),
     [] {
         print(Installer::miniExePath());
     }},
    {QStringLiteral("label"),
     [] {
         print(Installer::label());
     }},
};

} // namespace

// installer_host OPERATION, or: installer_host launchctlApplicationInPath PATH OPTION
int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    ToolPath::addHelpersToEnvironment(Bundle::mainBundle().helperPath());
    const QStringList arguments = QCoreApplication::arguments();
    const QString operation = arguments.value(1);
    if (operation == QStringLiteral("launchctlApplicationInPath")) {
        Installer::launchctlApplicationInPath(arguments.value(2), arguments.value(3));
        return EXIT_SUCCESS;
    }
    if (!operations.contains(operation))
        return EXIT_FAILURE;
    operations.value(operation)();
    return EXIT_SUCCESS;
}
