#include "cli/MachineFacts.h"

#include "cli/Json.h"
#include "shell/CommandLine.h"

#include <QSysInfo>

namespace velq::cli
{

namespace
{

constexpr const char *tools[] = {
    "arp",   "defaults", "ifconfig", "launchctl",      "netstat",   "networksetup", "ping",
    "route", "sudo",     "airport",  "NetworkManager", "systemctl", "pkexec"};

// A root's program that is not on a person's path is there as well.
QString firstLine(const char *tool)
{
    const QString line = QStringLiteral("PATH=$PATH:/usr/sbin:/sbin; %1 --version 2>/dev/null "
                                        "</dev/null | head -n 1")
                             .arg(QLatin1StringView(tool));
    const QString answer = outputOf(line).trimmed();
    return answer.isEmpty() ? QString() : answer;
}

QJsonValue variable(const char *name)
{
    const QString value = qEnvironmentVariable(name);
    return value.isEmpty() ? QJsonValue() : QJsonValue(value);
}

QStringList linesOf(const QString &commandLine)
{
    return outputOf(commandLine).split(u'\n', Qt::SkipEmptyParts);
}

} // namespace

QJsonObject systemFacts()
{
    return {{QStringLiteral("name"), QSysInfo::prettyProductName()},
            {QStringLiteral("kernel"), QSysInfo::kernelVersion()},
            {QStringLiteral("processor"), QSysInfo::currentCpuArchitecture()},
            {QStringLiteral("desktop"), variable("XDG_CURRENT_DESKTOP")},
            {QStringLiteral("session"), variable("XDG_SESSION_TYPE")},
            {QStringLiteral("qt"), QString::fromLatin1(qVersion())}};
}

QJsonObject toolVersions()
{
    QJsonObject versions;
    for (const char *const tool : tools)
        versions.insert(QLatin1StringView(tool), jsonOf(firstLine(tool)));
    return versions;
}

QStringList networkNames()
{
    // Most are networks that the person has used, and are called as those are.
    QStringList names = linesOf(QStringLiteral(
        "nmcli --terse --escape no --fields NAME connection show 2>/dev/null </dev/null"));
    for (const QString &line : linesOf(QStringLiteral("airport -I 2>/dev/null </dev/null")))
        if (line.trimmed().startsWith(QLatin1String("SSID: ")))
            names.append(line.section(QStringLiteral(": "), 1));
    return names;
}

} // namespace velq::cli
