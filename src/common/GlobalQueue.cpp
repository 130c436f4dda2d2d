#include "common/GlobalQueue.h"

#include <QThreadPool>

namespace velq
{

namespace
{

// Tasks wait for other processes rather than compute, so they may be many more than the cores; a
// command that hangs must not keep the next task from starting.
constexpr int mostThreads = 64;

QThreadPool &pool()
{
    static QThreadPool *const configured = [] {
        QThreadPool *global = QThreadPool::globalInstance();
        global->setMaxThreadCount(mostThreads);
        // The next task is twenty seconds away: a thread kept for it would only hold memory.
        global->setExpiryTimeout(0);
        return global;
    }();
    return *configured;
}

} // namespace

void GlobalQueue::async(std::function<void()> task)
{
    pool().start(std::move(task));
}

bool GlobalQueue::isIdle()
{
    return pool().waitForDone(0);
}

} // namespace velq
