#pragma once

#include <mutex>
#include <utility>

namespace velq
{

/// A value that several threads read and replace whole. Each access is safe by itself; two accesses
/// after one another are not one step.
template <typename Value> class Atomic
{
public:
    Atomic() = default;
    explicit Atomic(Value value)
        : m_value(std::move(value))
    {
    }

    Value load() const
    {
        const std::scoped_lock lock(m_mutex);
        return m_value;
    }

    void store(Value value)
    {
        const std::scoped_lock lock(m_mutex);
        std::swap(m_value, value);
    }

private:
    mutable std::mutex m_mutex;
    Value m_value{};
};

} // namespace velq
