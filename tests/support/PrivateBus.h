#pragma once

#include <string>
#include <sys/types.h>

namespace velq::testing
{

/// A session bus of the test's own, from construction to destruction, which the whole process is
/// pointed to. Made before Qt's application, which may look for the bus.
class PrivateBus
{
public:
    PrivateBus();
    PrivateBus(const PrivateBus &) = delete;
    PrivateBus &operator=(const PrivateBus &) = delete;
    ~PrivateBus();

    /// Empty when no bus could be started.
    std::string address() const { return m_address; }

private:
    pid_t m_daemon = -1;
    std::string m_address;
};

} // namespace velq::testing
