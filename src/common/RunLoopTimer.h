#pragma once

#include <QPointer>
#include <QTimer>

#include <chrono>
#include <functional>

namespace velq
{

/// A repeating timer that its run loop keeps alive, as a platform timer is: whoever scheduled it
/// may drop it, and it goes on until it is invalidated or its target is gone.
class RunLoopTimer : public QTimer
{
    Q_OBJECT

public:
    /// Schedules on the calling thread's event loop; the first firing is one interval away.
    /// `action` runs on that thread. `target` owns the timer: its end is the timer's.
    static QPointer<RunLoopTimer> scheduled(std::chrono::milliseconds interval, QObject *target,
                                            std::function<void()> action);

    /// Never fires again. Without effect on null or when done before.
    static void invalidate(const QPointer<RunLoopTimer> &timer);

private:
    using QTimer::QTimer;
};

} // namespace velq
