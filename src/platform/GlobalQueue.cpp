#include "platform/GlobalQueue.h"

#include "platform/TaskList.h"

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

TaskList &tasks()
{
    // Never destroyed: a task may still be running when the process ends.
    static auto *const list = new TaskList;
    return *list;
}

} // namespace

// The tasks travel in a list of our own: its lock is one that the thread sanitizer sees, Qt's is
// not.
void GlobalQueue::async(std::function<void()> task)
{
    tasks().append(std::move(task));
    pool().start([] { tasks().takeFirst()(); });
}

bool GlobalQueue::isIdle()
{
    return pool().waitForDone(0);
}

} // namespace velq
