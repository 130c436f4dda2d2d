#include "cli/Findings.h"

#include "cli/Json.h"
#include "common/Text.h"
#include "scanner/NetData.h"

#include <QJsonArray>
#include <QStringList>

#include <algorithm>

namespace velq::cli
{

namespace
{

using Items = QList<std::shared_ptr<GerenalData>>;

NetData::StatusList linesOf(const GerenalData &item)
{
    const auto *const data = dynamic_cast<const NetData *>(&item);
    return data != nullptr ? data->errorStatus() : NetData::StatusList();
}

QString headline(const GerenalData &item)
{
    const QString title = onOneLine(item.title()).trimmed();
    return item.ignore() || item.hasIgnore() ? title + QStringLiteral(" (ignored)\n")
                                             : title + u'\n';
}

// An abnormal line is to catch the eye.
QString textOf(const NetStatus &line)
{
    const QString mark = line.error ? QStringLiteral("  ! ") : QStringLiteral("    ");
    const QString description =
        line.des.isNull() ? QString() : QStringLiteral(": ") + onOneLine(line.des);
    return mark + onOneLine(line.name) + description + u'\n';
}

QString textOf(const GerenalData &item)
{
    QString text = headline(item);
    const NetData::StatusList lines = linesOf(item);
    for (const auto &line : lines)
        text += textOf(*line);
    if (!lines.isEmpty())
        return text;
    return text
        + (item.issue() != 0 ? QStringLiteral("  ! abnormal\n")
                             : QStringLiteral("    not checked\n"));
}

QString joined(const QList<qint64> &bits)
{
    QStringList numbers;
    for (const qint64 bit : bits)
        numbers.append(QString::number(bit));
    return numbers.isEmpty() ? QStringLiteral("none") : numbers.join(QStringLiteral(", "));
}

QList<qint64> bitsOf(qint64 status)
{
    QList<qint64> bits;
    for (qint64 bit = 1; bit > 0 && bit <= status; bit <<= 1)
        if ((status & bit) != 0)
            bits.append(bit);
    return bits;
}

QString summary(qint64 issues)
{
    if (issues == 1)
        return QStringLiteral("1 problem");
    return issues > 0 ? QStringLiteral("%1 problems").arg(issues)
                      : QStringLiteral("No problems but ignored ones");
}

QJsonObject recordOf(const NetStatus &line)
{
    return {{QStringLiteral("error"), line.error},
            {QStringLiteral("name"), jsonOf(line.name)},
            {QStringLiteral("des"), jsonOf(line.des)}};
}

QJsonObject recordOf(const GerenalData &item)
{
    QJsonArray lines;
    for (const auto &line : linesOf(item))
        lines.append(recordOf(*line));
    return {{QStringLiteral("title"), jsonOf(item.title())},
            {QStringLiteral("des"), jsonOf(item.des())},
            {QStringLiteral("ignoreKey"), jsonOf(item.ignoreKey())},
            {QStringLiteral("issue"), item.issue()},
            {QStringLiteral("ignore"), item.ignore()},
            {QStringLiteral("noShowIgnore"), item.noShowIgnore()},
            {QStringLiteral("errorStatus"), lines}};
}

} // namespace

QString Findings::text() const
{
    QString text;
    for (const auto &item : data.value_or(Items()))
        text += textOf(*item);
    if (areClean())
        return text + QStringLiteral("No problems.\n");
    return text + summary(issueCount)
        + QStringLiteral(" (bits: %1; told: %2).\n").arg(joined(bitsOf(errorStatus)), joined(told));
}

QString Findings::textWhenStopped() const
{
    const Items items = data.value_or(Items());
    const auto last = std::find_if(items.crbegin(), items.crend(),
                                   [](const auto &item) { return !linesOf(*item).isEmpty(); });
    QString text;
    for (qsizetype i = 0; i < items.size(); ++i)
        text += i < items.crend() - last - 1
            ? textOf(*items[i])
            : headline(*items[i]) + QStringLiteral("    not checked\n");
    return text + QStringLiteral("Stopped before the scan was over.\n");
}

QJsonObject Findings::json() const
{
    QJsonArray bits;
    for (const qint64 bit : told)
        bits.append(bit);
    QJsonArray items;
    for (const auto &item : data.value_or(Items()))
        items.append(recordOf(*item));
    return {{QStringLiteral("errorStatus"), errorStatus},
            {QStringLiteral("issueCount"), issueCount},
            {QStringLiteral("delegate"), bits},
            {QStringLiteral("items"), items}};
}

} // namespace velq::cli
