#include "platform/PropertyValue.h"

#include <QByteArray>

#include <algorithm>
#include <charconv>

namespace velq
{

namespace
{

bool isNumber(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::Double:
        return true;
    default:
        return false;
    }
}

// The number that a text begins with; 0 when it begins otherwise.
template <typename Number> Number leadingNumber(const QString &text)
{
    const QByteArray bytes = text.trimmed().toUtf8();
    const char *begin = bytes.startsWith('+') ? bytes.cbegin() + 1 : bytes.cbegin();
    Number number = 0;
    (void)std::from_chars(begin, bytes.cend(), number);
    return number;
}

// Cut towards 0, and 0 for what no integer can be.
qint64 wholePart(double number)
{
    constexpr double beyond = 9223372036854775808.0;
    return number > -beyond && number < beyond ? static_cast<qint64>(number) : 0;
}

bool saysYes(const QString &text)
{
    const QString before = QStringLiteral(" \t+-0");
    const auto *const first =
        std::ranges::find_if_not(text, [&](QChar c) { return before.contains(c); });
    return first != text.cend() && QStringLiteral("YyTt123456789").contains(*first);
}

} // namespace

QString textOfValue(const QVariant &value)
{
    if (value.typeId() == QMetaType::Bool)
        return value.toBool() ? QStringLiteral("1") : QStringLiteral("0");
    return value.typeId() == QMetaType::QString || isNumber(value) ? value.toString() : QString();
}

bool booleanOfValue(const QVariant &value)
{
    if (value.typeId() == QMetaType::QString)
        return saysYes(value.toString());
    return isNumber(value) && value.toDouble() != 0;
}

qint64 integerOfValue(const QVariant &value)
{
    if (value.typeId() == QMetaType::QString)
        return leadingNumber<qint64>(value.toString());
    if (value.typeId() == QMetaType::Double)
        return wholePart(value.toDouble());
    return isNumber(value) ? value.toLongLong() : 0;
}

double realOfValue(const QVariant &value)
{
    if (value.typeId() == QMetaType::QString)
        return leadingNumber<double>(value.toString());
    return isNumber(value) ? value.toDouble() : 0;
}

} // namespace velq
