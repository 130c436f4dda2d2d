#include "platform/DaemonInstallation.h"

#include "platform/PropertyList.h"
#include "platform/linux/rootdaemon/Contract.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>
#include <unistd.h>

namespace velq
{

namespace
{

constexpr QLatin1StringView programs("/usr/libexec/velq");
constexpr QLatin1StringView grants("/etc/velq/authorized.d");
constexpr QLatin1StringView busPolicies("/etc/dbus-1/system.d");

// One line of the list that the installation leaves: "PLACE MODE DIGEST".
struct Row {
    QString place;
    uint mode = 0;
    QByteArray digest;
};

std::optional<Row> rowOf(const QByteArray &line)
{
    const QList<QByteArray> words = line.simplified().split(' ');
    if (words.size() != 3)
        return std::nullopt;
    return Row{QString::fromUtf8(words[0]), words[1].toUInt(nullptr, 8), words[2]};
}

QByteArray digestOf(const QString &path)
{
    QFile file(path);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    return file.open(QIODevice::ReadOnly) && hash.addData(&file) ? hash.result().toHex()
                                                                 : QByteArray();
}

// Root's, with that mode, and no link.
bool isRootsFile(const QString &path, uint mode)
{
    struct stat status {
    };
    return lstat(QFile::encodeName(path).constData(), &status) == 0
        && status.st_mode == (S_IFREG | mode) && status.st_uid == 0 && status.st_gid == 0;
}

bool isAsInstalled(const Row &row, const QString &root)
{
    const QString path = root + row.place;
    return isRootsFile(path, row.mode) && digestOf(path) == row.digest;
}

QStringList faultyFiles(const QString &root)
{
    const QString manifest = programs + QStringLiteral("/manifest");
    QFile file(root + manifest);
    if (!file.open(QIODevice::ReadOnly))
        return {manifest};
    QStringList faulty;
    qsizetype rows = 0;
    while (!file.atEnd()) {
        const std::optional<Row> row = rowOf(file.readLine());
        if (row && !isAsInstalled(*row, root))
            faulty.append(row->place);
        rows += row ? 1 : 0;
    }
    return rows == 0 ? QStringList{manifest} : faulty;
}

QString policy(const QString &person)
{
    return busPolicies + u'/' + QLatin1String(rootdaemon::busName) + person
        + QStringLiteral(".conf");
}

std::optional<qint64> versionIn(const QString &path)
{
    const QVariant version = PropertyList::dictionaryFromFile(path)
                                 .value_or(QVariantMap())
                                 .value(QStringLiteral("Version"));
    return version.isValid() ? std::optional(version.toLongLong()) : std::nullopt;
}

} // namespace

DaemonInstallation DaemonInstallation::found(const QString &root)
{
    const QString person = QString::number(getuid());
    DaemonInstallation found;
    found.installed = QFileInfo::exists(root + programs) || QFileInfo::exists(root + policy({}));
    if (!found.installed)
        return found;
    found.faulty = faultyFiles(root);
    found.version = versionIn(root + programs + QStringLiteral("/com.zelmor.VelqDemon.plist"));
    found.granted = isRootsFile(root + policy(u'.' + person), 0644)
        && isRootsFile(root + grants + u'/' + person, 0644);
    return found;
}

} // namespace velq
