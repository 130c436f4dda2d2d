#include "platform/MainQueue.h"

#include <QCoreApplication>

namespace velq
{

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

void MainQueue::prepare()
{
    (void)instance();
}

void MainQueue::async(std::function<void()> task)
{
    instance().m_tasks.append(std::move(task));
    QMetaObject::invokeMethod(&instance(), "runNext", Qt::QueuedConnection);
}

void MainQueue::runNext()
{
    m_tasks.takeFirst()();
}

} // namespace velq
