#pragma once

#include <set>
#include <string>
#include <thread>

namespace velq::testing
{

/// Gives the calling process an /etc of its own in which names come from `hosts` (lines as in
/// hosts(5)) and then from a name server on 127.0.0.1. Returns the reason why the kernel refused,
/// empty on success. Needs a process of one thread, in a namespace where it is root.
std::string usePrivateNames(const std::string &hosts);

/// A name server on 127.0.0.1 that is out of order: it tells everyone to try again later.
class BrokenNameServer
{
public:
    BrokenNameServer();
    BrokenNameServer(const BrokenNameServer &) = delete;
    BrokenNameServer &operator=(const BrokenNameServer &) = delete;
    ~BrokenNameServer();

    /// Ends the service and returns the questions that came, each once.
    std::set<std::string> questions();

private:
    void serve();
    void stop();

    int m_socket;
    std::set<std::string> m_questions;
    std::thread m_thread;
};

} // namespace velq::testing
