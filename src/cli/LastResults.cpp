#include "cli/LastResults.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QSaveFile>

namespace velq::cli
{

namespace
{

// More than any result has.
constexpr qint64 largestFile = 1 << 20;

QDir folder()
{
    const QString state = qEnvironmentVariable("XDG_STATE_HOME");
    const QString base =
        QDir::isAbsolutePath(state) ? state : QDir::homePath() + QStringLiteral("/.local/state");
    return {base + QStringLiteral("/velq/results")};
}

} // namespace

void LastResults::keep(const QString &command, const QJsonDocument &result)
{
    const QDir results = folder();
    QDir().mkpath(results.path());
    QSaveFile file(results.filePath(command + QStringLiteral(".json")));
    if (!file.open(QIODevice::WriteOnly))
        return;
    // There are addresses in it.
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    const QJsonObject record{
        {QStringLiteral("when"), QDateTime::currentDateTime().toString(Qt::ISODate)},
        {QStringLiteral("result"), result.object()}};
    file.write(QJsonDocument(record).toJson());
    (void)file.commit();
}

QJsonObject LastResults::all()
{
    QJsonObject found;
    const QDir results = folder();
    for (const QString &name : results.entryList({QStringLiteral("*.json")}, QDir::Files)) {
        QFile file(results.filePath(name));
        if (!file.open(QIODevice::ReadOnly))
            continue;
        const QJsonDocument record = QJsonDocument::fromJson(file.read(largestFile));
        if (record.isObject())
            found.insert(name.chopped(5), record.object());
    }
    return found;
}

} // namespace velq::cli
