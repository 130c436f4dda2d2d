#pragma once

#include <unistd.h>
#include <utility>

/// Handles of the C library, owned. Standard C++; for every room that Linux alone has.
namespace velq::posix
{

/// An open file descriptor, or none (-1). Closed with its owner.
class Descriptor
{
public:
    explicit Descriptor(int number = -1)
        : m_number(number)
    {
    }
    Descriptor(Descriptor &&other) noexcept
        : m_number(std::exchange(other.m_number, -1))
    {
    }
    Descriptor &operator=(Descriptor &&other) noexcept
    {
        std::swap(m_number, other.m_number);
        return *this;
    }
    ~Descriptor() { reset(); }

    int get() const { return m_number; }
    bool isOpen() const { return m_number >= 0; }
    /// Closes it now.
    void reset()
    {
        if (isOpen())
            close(std::exchange(m_number, -1));
    }

private:
    int m_number;
};

} // namespace velq::posix
