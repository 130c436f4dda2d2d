#pragma once

#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <sys/types.h>

namespace velq::testing
{

/// A bundle Velq.app in a folder of its own, whose program (see application/main.cpp) tells what
/// happens to it. Whatever still runs out of it when this is destroyed is killed.
class TestBundle
{
public:
    explicit TestBundle(const QString &identifier);
    TestBundle(const TestBundle &) = delete;
    TestBundle &operator=(const TestBundle &) = delete;
    ~TestBundle();

    QString path() const { return m_path; }
    QString program() const;

    /// Starts the program as a child of the test's, which the caller waits for.
    pid_t start() const;
    /// The processes that run the program, in no order.
    QList<pid_t> processes() const;
    /// What they have told so far.
    QStringList log() const;

private:
    QTemporaryDir m_folder;
    QString m_path;
};

} // namespace velq::testing
