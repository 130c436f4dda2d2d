#include "cli/Restore.h"

#include "cli/Json.h"
#include "cli/MissingRights.h"
#include "cli/Misuse.h"
#include "cli/Services.h"
#include "common/Log.h"
#include "common/Text.h"
#include "platform/RootDaemon.h"
#include "shell/CommandLine.h"

#include <QJsonObject>

#include <algorithm>

namespace velq::cli
{

namespace
{

// What follows the tool's own words when it has succeeded.
constexpr QLatin1String done("restored\n");

QString nameOf(const QString &word)
{
    const QList<NetworkService> known = serviceInventory();
    const auto service = std::ranges::find_if(known, [&](const NetworkService &each) {
        return each.name == word || each.interface == word;
    });
    if (service == known.end())
        throw Misuse(QStringLiteral("there is no service '%1'; velq services lists those that "
                                    "there are")
                         .arg(word));
    return service->name;
}

QString answerOfRoot(const QString &service)
{
    // The answer of the command for whose sake the daemon is installed is lost.
    if (RootDaemon::rootProxy() == nullptr)
        (void)outputAsRoot(QStringLiteral("true"));
    if (RootDaemon::rootProxy() == nullptr)
        return {};
    return outputAsRoot(
        QStringLiteral("networksetup -restore %1 2>&1 && echo restored").arg(quotedWord(service)));
}

// Without the name of the tool.
QString reasonIn(const QString &answer)
{
    const QString line = answer.trimmed().section(u'\n', -1);
    const QString reason = onOneLine(line.section(QStringLiteral(": "), 1));
    return reason.isEmpty() ? QString() : reason;
}

Report outcome(const QString &text, const QString &service, bool restored, const QString &message,
               ExitStatus status)
{
    return {text + QStringLiteral(".\n"),
            QJsonDocument(QJsonObject{{QStringLiteral("service"), service},
                                      {QStringLiteral("restored"), restored},
                                      {QStringLiteral("message"), jsonOf(message)}}),
            status};
}

} // namespace

const Operand restoredService{"SERVICE", "as velq services lists it", nullptr, "services"};

Report restore(const Arguments &arguments, Interruption & /*ends it*/)
{
    const QString service = nameOf(arguments.operands.first());
    if (!arguments.json)
        log(QStringLiteral("Putting the settings of %1 back").arg(service));
    const QString answer = answerOfRoot(service);
    if (answer.endsWith(done))
        return outcome(QStringLiteral("The settings of %1 are as they were before Velq changed "
                                      "them")
                           .arg(onOneLine(service)),
                       service, true, {}, Fine);
    const QString reason = reasonIn(answer);
    if (reason.startsWith(QLatin1String("nothing has been changed")))
        return outcome(QStringLiteral("Nothing to put back: Velq has changed none of the settings "
                                      "of %1")
                           .arg(onOneLine(service)),
                       service, false, {}, Fine);
    explainMissingRights();
    const QString sentence =
        QStringLiteral("The settings of %1 could not be put back").arg(onOneLine(service));
    return outcome(reason.isNull() ? sentence : sentence + QStringLiteral(": ") + reason, service,
                   false, reason, Found);
}

} // namespace velq::cli
