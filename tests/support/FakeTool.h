#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

namespace velq::testing
{

/// A folder of fake tools in front of PATH, for as long as it lives. Not for tests that run threads
/// before it is made.
class FakeTools
{
public:
    FakeTools();
    FakeTools(const FakeTools &) = delete;
    FakeTools &operator=(const FakeTools &) = delete;
    ~FakeTools();

    /// An executable shell script of that name.
    void add(const QString &name, const QByteArray &script) const;
    /// A tool that prints exactly these bytes, and logs its command line.
    void addPrinting(const QString &name, const QByteArray &output) const;
    /// A tool that runs the script, and logs its command line.
    void addLogging(const QString &name, const QByteArray &script) const;
    /// A file in the folder.
    QString path(const QString &name) const;
    /// The command lines of the tools that log, one a line, in order: the shell's, where a shell
    /// runs a pipeline with the tool in it, else the tool's own.
    QByteArray log() const;
    void clearLog() const;

private:
    QTemporaryDir m_folder;
    QByteArray m_path;
};

} // namespace velq::testing
