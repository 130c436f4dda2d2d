#pragma once

#include <QObject>

namespace velq
{

/// Tells when the computer comes back from sleep. On Linux by the login manager's PrepareForSleep
/// signal on the system bus; without one it never tells.
class ResumeMonitor : public QObject
{
    Q_OBJECT

public:
    explicit ResumeMonitor(QObject *parent = nullptr);

Q_SIGNALS:
    void resumed();

private Q_SLOTS:
    void onPrepareForSleep(bool goingToSleep);
};

} // namespace velq
