#include "common/RunLoopTimer.h"

namespace velq
{

QPointer<RunLoopTimer> RunLoopTimer::scheduled(std::chrono::milliseconds interval, QObject *target,
                                               std::function<void()> action)
{
    auto *timer = new RunLoopTimer(target);
    connect(timer, &QTimer::timeout, target, std::move(action));
    timer->start(interval);
    return timer;
}

void RunLoopTimer::invalidate(const QPointer<RunLoopTimer> &timer)
{
    if (timer.isNull())
        return;
    timer->stop();
    timer->deleteLater();
}

} // namespace velq
