#include "support/TestBundle.h"

#include <QDir>
#include <QFile>

#include <csignal>
#include <unistd.h>

namespace velq::testing
{

namespace
{

void write(const QString &path, const QByteArray &text)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        qFatal("cannot write a bundle");
}

QByteArray informationDictionary(const QString &identifier)
{
    return "<plist version=\"1.0\"><dict><key>CFBundleIdentifier</key><string>"
        + identifier.toUtf8()
        + "</string><key>CFBundleExecutable</key><string>Velq</string></dict></plist>";
}

} // namespace

TestBundle::TestBundle(const QString &identifier)
    : m_path(QDir(m_folder.path()).canonicalPath() + QStringLiteral("/Velq.app"))
{
    QDir().mkpath(m_path + QStringLiteral("/Contents/MacOS"));
    write(m_path + QStringLiteral("/Contents/Info.plist"), informationDictionary(identifier));
    if (!QFile::copy(QStringLiteral(VELQ_TEST_APPLICATION), program()))
        qFatal("cannot copy the application");
}

TestBundle::~TestBundle()
{
    for (const pid_t pid : processes())
        kill(pid, SIGKILL);
}

QString TestBundle::program() const
{
    return m_path + QStringLiteral("/Contents/MacOS/Velq");
}

pid_t TestBundle::start() const
{
    const QByteArray file = program().toLocal8Bit();
    const pid_t child = fork();
    if (child == 0) {
        execl(file.constData(), file.constData(), nullptr);
        _exit(127);
    }
    return child;
}

QList<pid_t> TestBundle::processes() const
{
    QList<pid_t> found;
    const QDir all(QStringLiteral("/proc"));
    for (const QString &name : all.entryList({QStringLiteral("[1-9]*")}, QDir::Dirs)) {
        const QString link = QFile::symLinkTarget(all.filePath(name) + QStringLiteral("/exe"));
        if (link.startsWith(m_path))
            found.append(name.toInt());
    }
    return found;
}

QStringList TestBundle::log() const
{
    QFile file(m_path + QStringLiteral("/Contents/log"));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

} // namespace velq::testing
