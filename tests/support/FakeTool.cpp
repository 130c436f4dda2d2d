#include "support/FakeTool.h"

#include <QFile>

namespace velq::testing
{

FakeTools::FakeTools()
    : m_path(qgetenv("PATH"))
{
    qputenv("PATH", m_folder.path().toLocal8Bit() + ':' + m_path);
}

FakeTools::~FakeTools()
{
    qputenv("PATH", m_path);
}

void FakeTools::add(const QString &name, const QByteArray &script) const
{
    QFile file(path(name));
    if (!file.open(QIODevice::WriteOnly))
        qFatal("cannot write a fake tool");
    file.write("#!/bin/sh\n" + script + '\n');
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

void FakeTools::addPrinting(const QString &name, const QByteArray &output) const
{
    const QString text = name + QStringLiteral(".output");
    QFile file(path(text));
    if (!file.open(QIODevice::WriteOnly))
        qFatal("cannot write a fake tool's output");
    file.write(output);
    addLogging(name, "exec cat '" + path(text).toLocal8Bit() + "'");
}

void FakeTools::addLogging(const QString &name, const QByteArray &script) const
{
    add(name,
        R"sh(if [ "$(tr '\0' '\n' </proc/$PPID/cmdline | head -n 2 | tr '\n' ' ')" = '/bin/sh -c ' ]; then
    tr '\0' '\n' </proc/$PPID/cmdline | sed 1,2d
else
    echo "$(basename "$0") $*"
fi >> ')sh" + path(QStringLiteral("log")).toLocal8Bit()
            + "'\n" + script);
}

QString FakeTools::path(const QString &name) const
{
    return m_folder.filePath(name);
}

QByteArray FakeTools::log() const
{
    QFile file(path(QStringLiteral("log")));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void FakeTools::clearLog() const
{
    QFile::remove(path(QStringLiteral("log")));
}

} // namespace velq::testing
