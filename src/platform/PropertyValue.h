#pragma once

#include <QString>
#include <QVariant>

namespace velq
{

/// What a value of a property list stands for where another kind is asked for. An invalid value is
/// the negative answer. Any thread.

/// A text or a number as text; null for others.
QString textOfValue(const QVariant &value);

/// Whether it is true, a number other than 0, or a text that begins like "yes", "true" or one of
/// the digits 1 to 9.
bool booleanOfValue(const QVariant &value);

/// A number, cut towards 0, or the one that a text begins with; 0 for others.
qint64 integerOfValue(const QVariant &value);
double realOfValue(const QVariant &value);

} // namespace velq
