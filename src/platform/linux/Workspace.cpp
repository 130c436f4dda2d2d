#include "platform/Workspace.h"

#include "platform/Bundle.h"
#include "platform/linux/ApplicationActivation.h"
#include "platform/linux/DetachedStart.h"
#include "platform/linux/ProcessHandle.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <optional>
#include <unistd.h>

namespace velq
{

namespace
{

// proc(5): what the link of a program ends with whose file was deleted.
QString withoutDeletionMark(const QString &executable)
{
    const QString mark = QStringLiteral(" (deleted)");
    const bool deleted = executable.endsWith(mark) && !QFile::exists(executable);
    return deleted ? executable.chopped(mark.size()) : executable;
}

std::optional<RunningApplication> applicationOf(const QFileInfo &processFolder)
{
    const int pid = processFolder.fileName().toInt();
    if (processFolder.ownerId() != geteuid())
        return std::nullopt;
    auto process = ProcessHandle::open(pid);
    const QString executable =
        QFile::symLinkTarget(processFolder.filePath() + QStringLiteral("/exe"));
    // Whoever has the number was held before its link was read, if that one is still there.
    if (!executable.contains(QLatin1String("/Contents/MacOS/")) || process == nullptr
        || !process->send(0))
        return std::nullopt;
    return RunningApplication(pid, std::move(process), withoutDeletionMark(executable));
}

std::optional<RunningApplication> runningInstance(const Bundle &bundle)
{
    const QString identifier = bundle.bundleIdentifier();
    const QString path = QFileInfo(bundle.bundlePath()).canonicalFilePath();
    for (const RunningApplication &application : Workspace::runningApplications()) {
        if (identifier.isNull() ? application.bundlePath() == path
                                : application.bundleIdentifier() == identifier)
            return application;
    }
    return std::nullopt;
}

} // namespace

QList<RunningApplication> Workspace::runningApplications()
{
    QList<RunningApplication> applications;
    const QDir processes(QStringLiteral("/proc"));
    for (const QFileInfo &folder :
         processes.entryInfoList({QStringLiteral("[1-9]*")}, QDir::Dirs, QDir::NoSort)) {
        if (auto application = applicationOf(folder))
            applications.append(*std::move(application));
    }
    return applications;
}

bool Workspace::launchApplication(const QString &path)
{
    const Bundle bundle(path);
    const QString program = bundle.executablePath();
    if (program.isNull())
        return false;
    if (const auto running = runningInstance(bundle))
        return bringForward(*running);
    return startDetached({program}, bundle.bundleIdentifier());
}

bool Workspace::openURL(const QString &address)
{
    // Knows each desktop's way, the one out of a sandbox included.
    const QString opener = QStandardPaths::findExecutable(QStringLiteral("xdg-open"));
    return !opener.isEmpty() && startDetached({opener, address}, {});
}

} // namespace velq
