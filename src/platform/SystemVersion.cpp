#include "platform/SystemVersion.h"

#include <QStringList>

namespace velq
{

SystemVersion SystemVersion::fromText(const QString &text)
{
    const QStringList parts = text.split(QLatin1Char('.'));
    return {parts.value(0).toInt(), parts.value(1).toInt(), parts.value(2).toInt()};
}

} // namespace velq
