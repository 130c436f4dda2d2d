#include "platform/SystemVersion.h"

#include <QSettings>

namespace velq
{

namespace
{

// os-release(5): /etc first, /usr/lib where a system keeps no copy there. Values may be quoted.
QString versionId(const QString &path)
{
    return QSettings(path, QSettings::IniFormat).value(QStringLiteral("VERSION_ID")).toString();
}

} // namespace

SystemVersion SystemVersion::current()
{
    const QString local = versionId(QStringLiteral("/etc/os-release"));
    return fromText(local.isEmpty() ? versionId(QStringLiteral("/usr/lib/os-release")) : local);
}

} // namespace velq
