#include "cli/KeptSettings.h"

#include "common/Text.h"
#include "diagnosis/NetworkScanner.h"
#include "platform/NetworkKeeper.h"
#include "shell/CommandLine.h"

namespace velq::cli
{

namespace
{

constexpr QChar switchedOff = u'*';

// Of the information only the way in which an address is got: leases come and go.
QString settingsOf(const QString &service)
{
    return outputOf(QStringLiteral("networksetup -getinfo %1 | head -n 1; "
                                   "networksetup -getdnsservers %1; networksetup -getMTU %1")
                        .arg(quotedWord(service)));
}

} // namespace

KeptSettings KeptSettings::now()
{
    KeptSettings settings;
    if (NetworkKeeper::state() != NetworkKeeper::State::Running)
        return settings;
    for (QString service : NetworkScanner::shareScanner().networkServices()) {
        if (service.startsWith(switchedOff))
            service.remove(0, 1);
        settings.m_texts.insert(service, settingsOf(service));
    }
    return settings;
}

QStringList KeptSettings::changedSince() const
{
    QStringList services = m_texts.keys();
    services.removeIf(
        [this](const QString &service) { return settingsOf(service) == m_texts[service]; });
    services.sort();
    return services;
}

QString KeptSettings::wayBack() const
{
    QStringList commands;
    for (const QString &service : changedSince())
        commands.append(QStringLiteral("velq restore ") + onOneLine(typedWord(service)));
    return commands.isEmpty() ? QString()
                              : QStringLiteral("To put back the settings that were changed: %1\n")
                                    .arg(commands.join(QStringLiteral(" && ")));
}

} // namespace velq::cli
