#pragma once

#include <functional>

namespace velq
{

/// The process's one queue for work that waits: tasks run side by side, each on a thread of the
/// global thread pool, in no order. Threads end with their last task.
class GlobalQueue
{
public:
    /// Runs `task` later on another thread; returns at once. Any thread.
    static void async(std::function<void()> task);

    /// Whether every task has ended.
    static bool isIdle();
};

} // namespace velq
