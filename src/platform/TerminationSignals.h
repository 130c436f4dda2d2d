#pragma once

#include <QObject>

#include <memory>

class QSocketNotifier;

namespace velq
{

/// Turns SIGTERM, SIGINT and SIGHUP into an event, so that the program ends through its event loop.
///
/// Make it on the main thread before any other thread starts: those inherit the blocked signals.
/// Child processes get the default handling back.
class TerminationSignals : public QObject
{
    Q_OBJECT

public:
    /// Keeps the signals from ending the process; until one of these objects exists, they wait.
    /// First thing on the main thread: only threads started later inherit it.
    static void block();

    explicit TerminationSignals(QObject *parent = nullptr);
    ~TerminationSignals() override;

    /// Whether child processes started from now on live through SIGINT, which a terminal sends to
    /// all of its foreground; one that handles the signal itself does not.
    static void spareChildren(bool spare);

    /// Ends the process as this signal, by default, would have: whoever waits for it can tell.
    [[noreturn]] static void endBy(int signal);

Q_SIGNALS:
    void received(int signal);

private:
    void onReadable();

    int m_descriptor = -1;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace velq
