#include "platform/MainQueue.h"

#include "platform/TaskList.h"

#include <QCoreApplication>
#include <QThread>

#include <future>
#include <memory>

namespace velq
{

namespace
{

// Not in the queue: any thread may have made that, and the way by which the main thread hears of it
// is one that the thread sanitizer does not see.
TaskList &tasks()
{
    // Never destroyed, as the queue.
    static auto *const list = new TaskList;
    return *list;
}

} // namespace

// The first use may come from another thread.
MainQueue::MainQueue()
{
    moveToThread(QCoreApplication::instance()->thread());
}

MainQueue &MainQueue::instance()
{
    // Never destroyed: a task may still be running when the process ends.
    static auto *const queue = new MainQueue;
    return *queue;
}

void MainQueue::async(std::function<void()> task)
{
    tasks().append(std::move(task));
    QMetaObject::invokeMethod(&instance(), "runNext", Qt::QueuedConnection);
}

void MainQueue::sync(const std::function<void()> &task)
{
    if (QThread::currentThread() == instance().thread()) {
        task();
        return;
    }
    // Shared, because the main thread may still be busy with it when the waiting thread goes on.
    const auto work = std::make_shared<std::packaged_task<void()>>(task);
    std::future<void> done = work->get_future();
    async([work] { (*work)(); });
    done.get();
}

void MainQueue::runNext()
{
    tasks().takeFirst()();
}

} // namespace velq
