#include "process/nettools/NameServer.h"

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <netinet/in.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/socket.h>
#include <unistd.h>

namespace velq::testing
{

namespace
{

// RFC 1035, section 4.1.1.
constexpr size_t headerSize = 12;
constexpr size_t flagsAt = 2;

sockaddr_in serverAddress()
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(53);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return address;
}

} // namespace

std::string usePrivateNames(const std::string &hosts)
{
    if (unshare(CLONE_NEWNS) != 0 || mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0
        || mount("tmpfs", "/etc", "tmpfs", 0, nullptr) != 0)
        return std::string("the kernel gives no private /etc: ") + std::strerror(errno);
    std::ofstream("/etc/hosts") << hosts;
    std::ofstream("/etc/nsswitch.conf") << "hosts: files dns\n";
    std::ofstream("/etc/resolv.conf") << "nameserver 127.0.0.1\noptions timeout:1 attempts:1\n";
    return {};
}

BrokenNameServer::BrokenNameServer()
    : m_socket(socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0))
{
    const sockaddr_in address = serverAddress();
    EXPECT_EQ(bind(m_socket, reinterpret_cast<const sockaddr *>(&address), sizeof address), 0);
    m_thread = std::thread([this] { serve(); });
}

BrokenNameServer::~BrokenNameServer()
{
    stop();
    close(m_socket);
}

std::set<std::string> BrokenNameServer::questions()
{
    stop();
    return m_questions;
}

void BrokenNameServer::serve()
{
    std::array<char, 512> message{};
    while (true) {
        sockaddr_in asker{};
        socklen_t size = sizeof asker;
        const ssize_t got = recvfrom(m_socket, message.data(), message.size(), 0,
                                     reinterpret_cast<sockaddr *>(&asker), &size);
        if (got < static_cast<ssize_t>(headerSize))
            return;
        m_questions.emplace(message.data() + headerSize);
        message[flagsAt] = static_cast<char>(0x81);
        message[flagsAt + 1] = static_cast<char>(0x82);
        sendto(m_socket, message.data(), static_cast<size_t>(got), 0,
               reinterpret_cast<const sockaddr *>(&asker), size);
    }
}

// An empty message is the service's end.
void BrokenNameServer::stop()
{
    if (!m_thread.joinable())
        return;
    const sockaddr_in address = serverAddress();
    sendto(m_socket, nullptr, 0, 0, reinterpret_cast<const sockaddr *>(&address), sizeof address);
    m_thread.join();
}

} // namespace velq::testing
