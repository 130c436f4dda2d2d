#include "support/PrivateBus.h"

#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace velq::testing
{

namespace
{

[[noreturn]] void becomeDaemon(int addressPipe)
{
    // A test that crashes leaves no bus behind.
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    const std::string printAddress = "--print-address=" + std::to_string(addressPipe);
    execlp("dbus-daemon", "dbus-daemon", "--session", "--nofork", "--nopidfile",
           printAddress.c_str(), nullptr);
    _exit(127);
}

std::string firstLine(int pipe)
{
    const std::unique_ptr<FILE, int (*)(FILE *)> stream(fdopen(pipe, "r"), &std::fclose);
    std::array<char, 512> line{};
    if (std::fgets(line.data(), line.size(), stream.get()) == nullptr)
        return {};
    std::string text(line.data());
    return text.substr(0, text.find('\n'));
}

} // namespace

PrivateBus::PrivateBus()
{
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0)
        return;
    m_daemon = fork();
    if (m_daemon == 0)
        becomeDaemon(ends[1]);
    close(ends[1]);
    m_address = firstLine(ends[0]);
    setenv("DBUS_SESSION_BUS_ADDRESS", m_address.c_str(), 1);
}

PrivateBus::~PrivateBus()
{
    if (m_daemon <= 0)
        return;
    kill(m_daemon, SIGKILL);
    waitpid(m_daemon, nullptr, 0);
}

} // namespace velq::testing
