#pragma once

#include <QObject>

#include <functional>

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

    /// Runs `task` on the main thread and returns when it has been done; what it throws is thrown
    /// here. On the main thread that is at once, without waiting for the tasks of others.
    static void sync(const std::function<void()> &task);

private:
    MainQueue();
    static MainQueue &instance();
    Q_INVOKABLE void runNext();
};

} // namespace velq
