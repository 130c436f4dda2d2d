#include "common/AirportOutput.h"

#include <QHash>

#include <algorithm>

namespace velq
{

namespace
{

constexpr QLatin1String separator(": ");

// Blanks and tabs; a carriage return is neither.
bool isBlank(QChar each)
{
    return each == u'\t' || each.category() == QChar::Separator_Space;
}

QStringView withoutBlanks(QStringView text)
{
    const auto *const begin = std::ranges::find_if_not(text, isBlank);
    const auto *end = text.cend();
    while (end != begin && isBlank(*(end - 1)))
        --end;
    return {begin, end};
}

QHash<QStringView, QStringView> valuesIn(QStringView output)
{
    QHash<QStringView, QStringView> values;
    for (const QStringView line : output.split(u'\n')) {
        const qsizetype end = line.indexOf(separator);
        if (end < 0)
            continue;
        const QStringView rest = line.sliced(end + separator.size());
        const qsizetype next = rest.indexOf(separator);
        values.insert(withoutBlanks(line.first(end)), next < 0 ? rest : rest.first(next));
    }
    return values;
}

} // namespace

WifiState wifiStateFrom(const QString &output)
{
    const auto values = valuesIn(output);
    if (values.value(u"AirPort") == QLatin1String("Off"))
        return WifiOff;
    return values.value(u"SSID").isEmpty() ? WifiOn : WifiJoined;
}

} // namespace velq
