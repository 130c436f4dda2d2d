#include "shell/DaemonInstaller.h"

#include "platform/Bundle.h"
#include "shell/DaemonScripts.h"

#include <QDir>
#include <QFile>

namespace velq
{

namespace
{

using Outcome = AdministratorRights::Outcome;

QString resource(const QString &name)
{
    return Bundle::mainBundle().resourcePath() + QLatin1Char('/') + name;
}

QString cachesFolder()
{
    return QDir::homePath() + QStringLiteral("/Library/Caches");
}

/// A copy of a resource in the caches folder, for as long as it lives. What was there before is
/// replaced. That it could not be made shows when it is used.
class StagedFile
{
public:
    explicit StagedFile(const QString &name)
        : m_path(cachesFolder() + QLatin1Char('/') + name)
    {
        QFile::remove(m_path);
        QFile::copy(resource(name), m_path);
    }
    StagedFile(const StagedFile &) = delete;
    StagedFile &operator=(const StagedFile &) = delete;
    ~StagedFile() { QFile::remove(m_path); }

    QString path() const { return m_path; }

private:
    QString m_path;
};

// The paths stand unescaped in the script's command line: one with a blank is several words of it,
// none of which the script takes for a file of ours. Nothing else is expanded, as root would do it.
QStringList wordsOf(const QStringList &paths)
{
    return paths.join(QLatin1Char(' ')).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

AdministratorRights::Result run(const QString &name, const char *digest,
                                const QStringList &arguments)
{
    return AdministratorRights::run({QString::fromLatin1(DaemonScripts::bootstrap),
                                     QString::fromLatin1(digest), resource(name), arguments});
}

} // namespace

bool DaemonInstaller::installDaemon()
{
    QDir().mkpath(cachesFolder());
    const StagedFile daemon(QStringLiteral("VelqDemon"));
    const StagedFile propertyList(QStringLiteral("com.zelmor.VelqDemon.plist"));
    return run(QStringLiteral("copy.sh"), DaemonScripts::copyDigest,
               wordsOf({daemon.path(), propertyList.path()}))
               .outcome
        == Outcome::Cancelled;
}

AdministratorRights::Result DaemonInstaller::removeDaemon()
{
    return run(QStringLiteral("remove.sh"), DaemonScripts::removeDigest, {});
}

} // namespace velq
