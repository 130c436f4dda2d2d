#pragma once

#include "platform/TaskList.h"

#include <QObject>

namespace velq
{

/// The queue of the main thread: how a background task hands its result back.
class MainQueue : public QObject
{
    Q_OBJECT

public:
    /// Runs `task` later on the main thread, in the order of the calls; returns at once. Any
    /// thread, while the application object exists.
    static void async(std::function<void()> task);

    /// Makes the queue before others use it; without that, the first use does.
    static void prepare();

private:
    MainQueue();
    static MainQueue &instance();
    Q_INVOKABLE void runNext();

    TaskList m_tasks;
};

} // namespace velq
