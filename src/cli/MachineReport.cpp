#include "cli/MachineReport.h"

#include "cli/Columns.h"
#include "cli/Connection.h"
#include "cli/Helper.h"
#include "cli/Json.h"
#include "cli/LastResults.h"
#include "cli/MachineFacts.h"
#include "cli/Monitor.h"
#include "cli/Proxies.h"
#include "cli/Redaction.h"
#include "cli/Services.h"
#include "common/Text.h"
#include "platform/Bundle.h"
#include "platform/NetworkKeeper.h"

#include <QJsonArray>
#include <QJsonObject>

namespace velq::cli
{

namespace
{

QString wordOf(NetworkKeeper::State state)
{
    using State = NetworkKeeper::State;
    return state == State::Running ? QStringLiteral("running")
        : state == State::Stopped  ? QStringLiteral("stopped")
                                   : QStringLiteral("absent");
}

QJsonObject connectionRecord()
{
    const Connection connection = Connection::now();
    return {{QStringLiteral("connected"), connection.connected},
            {QStringLiteral("interface"), jsonOf(connection.interface)},
            {NetworkKeeper::name(), wordOf(NetworkKeeper::state())}};
}

QJsonObject everything()
{
    return {{QStringLiteral("velq"),
             Bundle::mainBundle().textForInfoDictionaryKey(
                 QStringLiteral("CFBundleShortVersionString"))},
            {QStringLiteral("connection"), connectionRecord()},
            {QStringLiteral("system"), systemFacts()},
            {QStringLiteral("tools"), toolVersions()},
            {QStringLiteral("helper"), helperRecord()},
            {QStringLiteral("monitor"), monitorRecord()},
            {QStringLiteral("services"), services().json.array()},
            {QStringLiteral("proxies"), proxies().json.array()},
            {QStringLiteral("results"), LastResults::all()}};
}

QStringList valuesOf(const QJsonValue &records, const QString &key)
{
    QStringList values;
    for (const QJsonValue record : records.toArray())
        values.append(record[key].toString());
    return values;
}

// A port's own name, as "Wi-Fi", is nobody's secret; a proxy's can be any word.
QJsonObject blanked(const QJsonObject &facts)
{
    QList<Redaction::Names> names = Redaction::ofThisPerson();
    const QStringList ports = valuesOf(facts[u"services"], QStringLiteral("netType"));
    QStringList networks = networkNames();
    networks.removeIf([&ports](const QString &name) { return ports.contains(name); });
    names.append({QStringLiteral("network"), networks});
    names.append(
        {QStringLiteral("server"), valuesOf(facts[u"proxies"], QStringLiteral("serverIP"))});
    return Redaction(names).of(QJsonValue(facts)).toObject();
}

// A fact as a word: yes and no, numbers, texts.
QString wordOf(const QJsonValue &fact)
{
    if (fact.isBool())
        return fact.toBool() ? QStringLiteral("yes") : QStringLiteral("no");
    return fact.isDouble() ? QString::number(fact.toInteger()) : fact.toString();
}

QString heading(const QString &title)
{
    return u'\n' + title + QStringLiteral(":\n");
}

// In the order of these keys.
QString tableOf(const QJsonValue &facts, const QStringList &keys)
{
    QList<QStringList> rows;
    for (const QString &key : keys)
        rows.append({QStringLiteral("  ") + key, wordOf(facts[key])});
    return columns(rows);
}

QString indented(const QString &lines)
{
    QString text;
    for (const QString &line : lines.split(u'\n', Qt::SkipEmptyParts))
        text += QStringLiteral("  ") + line + u'\n';
    return text;
}

QString resultLine(const QJsonValue &line)
{
    const QString mark = line[u"error"].toBool() ? QStringLiteral("  ! ") : QStringLiteral("    ");
    const QString description = line[u"des"].toString();
    return mark + onOneLine(line[u"name"].toString())
        + (description.isEmpty() ? QString() : QStringLiteral(": ") + onOneLine(description))
        + u'\n';
}

QString resultText(const QJsonObject &item)
{
    QString text = QStringLiteral("  %1, issue %2\n")
                       .arg(onOneLine(item[u"title"].toString()).trimmed())
                       .arg(item[u"issue"].toInteger());
    for (const QJsonValue line : item[u"errorStatus"].toArray())
        text += resultLine(line);
    return text;
}

QString resultsText(const QJsonObject &results)
{
    QString text;
    for (auto kept = results.begin(); kept != results.end(); ++kept) {
        const QJsonValue result = kept.value()[u"result"];
        text += heading(QStringLiteral("Last %1, %2, status %3")
                            .arg(kept.key(), kept.value()[u"when"].toString())
                            .arg(result[u"errorStatus"].toInteger()));
        for (const QJsonValue item : result[u"items"].toArray())
            text += resultText(item.toObject());
    }
    return text;
}

QString textOf(const QJsonObject &facts)
{
    return QStringLiteral("Velq %1\n").arg(facts[u"velq"].toString())
        + heading(QStringLiteral("Connection"))
        + tableOf(facts[u"connection"],
                  {QStringLiteral("connected"), QStringLiteral("interface"), NetworkKeeper::name()})
        + heading(QStringLiteral("System"))
        + tableOf(facts[u"system"],
                  {QStringLiteral("name"), QStringLiteral("kernel"), QStringLiteral("processor"),
                   QStringLiteral("desktop"), QStringLiteral("session"), QStringLiteral("qt")})
        + heading(QStringLiteral("Tools"))
        + tableOf(facts[u"tools"], facts[u"tools"].toObject().keys())
        + heading(QStringLiteral("Helper")) + indented(helperText(facts[u"helper"].toObject()))
        + heading(QStringLiteral("Monitor"))
        + tableOf(
               facts[u"monitor"],
               {QStringLiteral("installed"), QStringLiteral("version"), QStringLiteral("running")})
        + heading(QStringLiteral("Services")) + indented(servicesText(facts[u"services"].toArray()))
        + heading(QStringLiteral("Proxies")) + indented(proxiesText(facts[u"proxies"].toArray()))
        + resultsText(facts[u"results"].toObject());
}

} // namespace

Report machineReport(const Arguments &arguments, Interruption & /*ends it*/)
{
    const QJsonObject facts = everything();
    const QJsonObject told = arguments.has(privateOption) ? facts : blanked(facts);
    return {textOf(told), QJsonDocument(told)};
}

} // namespace velq::cli
