#include "platform/linux/DetachedStart.h"

#include "platform/linux/OrphanProcess.h"
#include "platform/linux/launchagent/Agent.h"
#include "platform/linux/launchagent/Domain.h"
#include "platform/linux/launchagent/Error.h"
#include "platform/linux/launchagent/ServiceManager.h"

#include <QProcessEnvironment>
#include <QRandomGenerator>
#include <QRegularExpression>

namespace velq
{

namespace
{

// What the service manager tells each service about itself, systemd.exec(5).
const QStringList &ownVariables()
{
    static const QStringList names{
        QStringLiteral("INVOCATION_ID"),  QStringLiteral("JOURNAL_STREAM"),
        QStringLiteral("NOTIFY_SOCKET"),  QStringLiteral("SYSTEMD_EXEC_PID"),
        QStringLiteral("LISTEN_PID"),     QStringLiteral("LISTEN_FDS"),
        QStringLiteral("LISTEN_FDNAMES"), QStringLiteral("WATCHDOG_PID"),
        QStringLiteral("WATCHDOG_USEC"),  QStringLiteral("MANAGERPID"),
    };
    return names;
}

// A single assignment that systemd does not like would make it refuse all of them.
std::vector<std::string> assignments()
{
    static const QRegularExpression liked(
        QStringLiteral("^[A-Za-z_][A-Za-z0-9_]*=[^\\x00-\\x1f\\x7f]*$"));
    std::vector<std::string> result;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const QString &name : ownVariables())
        environment.remove(name);
    for (const QString &assignment : environment.toStringList()) {
        if (liked.match(assignment).hasMatch())
            result.push_back(assignment.toStdString());
    }
    return result;
}

// The desktops' convention: app-IDENTIFIER-RANDOM.service, a hyphen in the identifier escaped.
std::string serviceName(const QString &identifier)
{
    const bool usable = launchagent::isLabel(identifier.toStdString());
    QString name = usable ? identifier : QStringLiteral("com.zelmor");
    name.replace(QLatin1Char('-'), QStringLiteral("\\x2d"));
    return QStringLiteral("app-%1-%2.service")
        .arg(name, QString::number(QRandomGenerator::global()->generate(), 16))
        .toStdString();
}

bool startAsService(const std::vector<std::string> &words, const QString &identifier)
{
    try {
        launchagent::ServiceManager manager(launchagent::Domain::ofPerson());
        manager.startTransient(serviceName(identifier), words, assignments());
        return true;
    } catch (const launchagent::Error &) {
        return false;
    }
}

} // namespace

bool startDetached(const QStringList &words, const QString &identifier)
{
    std::vector<std::string> command;
    command.reserve(static_cast<std::size_t>(words.size()));
    for (const QString &word : words)
        command.push_back(word.toStdString());
    return startAsService(command, identifier) || startOrphan(command, assignments());
}

} // namespace velq
