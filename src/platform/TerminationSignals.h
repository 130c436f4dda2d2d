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

Q_SIGNALS:
    void received();

private:
    void onReadable();

    int m_descriptor = -1;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace velq
