#pragma once

#include "shell/process/ChildProcess.h"
#include "support/FakeTool.h"
#include "support/PrivateBus.h"

#include <QByteArray>

#include <functional>

namespace velq::testing
{

/// A root daemon on a system bus of the test's own that runs nothing: a command line goes into the
/// tools' log as "root: LINE", and its output is what the test says. Needs root, as who is not root
/// is not asked.
class FakeRootDaemon
{
public:
    explicit FakeRootDaemon(const FakeTools &tools);
    FakeRootDaemon(const FakeRootDaemon &) = delete;
    FakeRootDaemon &operator=(const FakeRootDaemon &) = delete;
    ~FakeRootDaemon();

    /// What every command prints from now on; nothing at first.
    void setAnswer(const QByteArray &output) const;

    /// Calls `run`, and once `line` is in the tools' log `meanwhile`, on another thread. A command
    /// as root goes on only after that.
    void during(const QByteArray &line, const std::function<void()> &run,
                const std::function<void()> &meanwhile) const;

private:
    const FakeTools &m_tools;
    PrivateBus m_bus;
    process::ChildProcess m_daemon;
};

} // namespace velq::testing
