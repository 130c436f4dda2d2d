#pragma once

#include <deque>
#include <functional>
#include <mutex>

namespace velq
{

/// Tasks on their way from one thread to another, first in, first out. Any thread.
class TaskList
{
public:
    using Task = std::function<void()>;

    void append(Task task)
    {
        const std::scoped_lock lock(m_mutex);
        m_tasks.push_back(std::move(task));
    }

    /// The oldest task; an empty function when there is none.
    Task takeFirst()
    {
        const std::scoped_lock lock(m_mutex);
        if (m_tasks.empty())
            return {};
        Task task = std::move(m_tasks.front());
        m_tasks.pop_front();
        return task;
    }

private:
    std::mutex m_mutex;
    std::deque<Task> m_tasks;
};

} // namespace velq
