#include "cli/Helper.h"

#include "cli/Actions.h"
#include "cli/Columns.h"
#include "cli/Json.h"
#include "common/Log.h"
#include "common/Text.h"
#include "platform/DaemonInstallation.h"
#include "platform/RootDaemon.h"
#include "shell/DaemonInstaller.h"

#include <QJsonArray>

namespace velq::cli
{

namespace
{

using Outcome = AdministratorRights::Outcome;

bool answers()
{
    const auto daemon = RootDaemon::rootProxy();
    return daemon != nullptr && daemon->respondsToRunShell();
}

bool serves(const QJsonObject &record)
{
    return record[u"complete"].toBool() && record[u"granted"].toBool()
        && record[u"answers"].toBool();
}

Report status()
{
    const QJsonObject record = helperRecord();
    return {helperText(record), QJsonDocument(record), serves(record) ? Fine : Found};
}

Report removal(const QString &text, const QString &message, ExitStatus status)
{
    const QString sentence = message.isNull() ? text : text + QStringLiteral(": ") + message;
    return {sentence + QStringLiteral(".\n"),
            QJsonDocument(
                QJsonObject{{QStringLiteral("installed"), DaemonInstallation::found().installed},
                            {QStringLiteral("granted"), DaemonInstallation::found().granted},
                            {QStringLiteral("message"), jsonOf(message)}}),
            status};
}

QString lastLine(const QString &message)
{
    const QString line = message.trimmed().section(u'\n', -1);
    return line.isEmpty() ? QString()
                          : onOneLine(line.endsWith(u'.') ? line.chopped(1) : line).trimmed();
}

Report remove()
{
    if (!DaemonInstallation::found().installed)
        return removal(QStringLiteral("There is no helper to remove"), {}, Fine);
    if (const auto found = DaemonInstallation::found(); found.isComplete() && !found.granted)
        return removal(QStringLiteral("The helper is not there for you; those for whom it is can "
                                      "remove it"),
                       {}, Found);
    log(QStringLiteral("Removing the helper"));
    const AdministratorRights::Result result = DaemonInstaller::removeDaemon();
    if (result.outcome == Outcome::Cancelled)
        return removal(QStringLiteral("The helper stays: the question for the administrator's "
                                      "password was dismissed"),
                       {}, Found);
    if (result.outcome == Outcome::Failed)
        return removal(QStringLiteral("The helper could not be removed"), lastLine(result.message),
                       Found);
    return removal(DaemonInstallation::found().installed
                       ? QStringLiteral("The helper is not there for you any more; it stays for "
                                        "others")
                       : QStringLiteral("The helper is removed"),
                   {}, Fine);
}

constexpr Action actions[] = {{"status", status}, {"remove", remove}};

} // namespace

const Operand helperAction{"ACTION", "status or remove", namesOf<actions>};

Report helper(const Arguments &arguments, Interruption & /*ends it*/)
{
    return performed(actions, arguments);
}

QJsonObject helperRecord()
{
    const DaemonInstallation found = DaemonInstallation::found();
    return {{QStringLiteral("installed"), found.installed},
            {QStringLiteral("complete"), found.isComplete()},
            {QStringLiteral("faulty"), QJsonArray::fromStringList(found.faulty)},
            {QStringLiteral("version"), found.version ? QJsonValue(*found.version) : QJsonValue()},
            {QStringLiteral("granted"), found.granted},
            {QStringLiteral("answers"), answers()}};
}

QString helperText(const QJsonObject &record)
{
    const auto yesOrNo = [&record](const QString &key) {
        return record[key].toBool() ? QStringLiteral("yes") : QStringLiteral("no");
    };
    const QJsonValue version = record[u"version"];
    QString text = columns({{QStringLiteral("installed"), yesOrNo(QStringLiteral("installed"))},
                            {QStringLiteral("complete"), yesOrNo(QStringLiteral("complete"))},
                            {QStringLiteral("version"),
                             version.isNull() ? QString() : QString::number(version.toInteger())},
                            {QStringLiteral("there for you"), yesOrNo(QStringLiteral("granted"))},
                            {QStringLiteral("answers"), yesOrNo(QStringLiteral("answers"))}});
    for (const QJsonValue file : record[u"faulty"].toArray())
        text += QStringLiteral("missing or changed: %1\n").arg(file.toString());
    return text;
}

} // namespace velq::cli
