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
    /// A tool that prints exactly these bytes, and logs its arguments.
    void addPrinting(const QString &name, const QByteArray &output) const;
    /// A file in the folder.
    QString path(const QString &name) const;
    /// The command lines of the tools made by addPrinting(), one a line, in order.
    QByteArray log() const;

private:
    QTemporaryDir m_folder;
    QByteArray m_path;
};

} // namespace velq::testing
