#include "platform/linux/launchagent/SessionVariables.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fstream>
#include <optional>
#include <string_view>
#include <sys/stat.h>

namespace velq::launchagent
{

namespace
{

using std::chrono::system_clock;

constexpr const char *busVariable = "DBUS_SESSION_BUS_ADDRESS";
constexpr std::array variables{"DISPLAY", "WAYLAND_DISPLAY", "XAUTHORITY", "XDG_CURRENT_DESKTOP",
                               "XDG_SESSION_TYPE"};

std::string valueOf(const char *name)
{
    const char *value = std::getenv(name);
    return value == nullptr ? std::string() : std::string(value);
}

bool hasControlCharacters(std::string_view text)
{
    return std::ranges::any_of(text, [](unsigned char c) { return c < 0x20 || c == 0x7f; });
}

bool displayIsLocal()
{
    return valueOf("DISPLAY").starts_with(':') || !valueOf("WAYLAND_DISPLAY").empty();
}

// The service manager knows its own bus, and writes its address in its own way.
bool isTheManagersBus(const std::string &address)
{
    const std::string own = "unix:path=" + valueOf("XDG_RUNTIME_DIR") + "/bus";
    return address.starts_with(own) && (address.size() == own.size() || address[own.size()] == ',');
}

std::vector<std::string> displaySockets()
{
    std::vector<std::string> sockets;
    const std::string display = valueOf("DISPLAY");
    if (display.starts_with(':'))
        sockets.push_back("/tmp/.X11-unix/X" + display.substr(1, display.find('.') - 1));
    const std::string wayland = valueOf("WAYLAND_DISPLAY");
    if (!wayland.empty())
        sockets.push_back(wayland.front() == '/' ? wayland
                                                 : valueOf("XDG_RUNTIME_DIR") + '/' + wayland);
    return sockets;
}

bool isYoungerThan(const std::string &file, system_clock::time_point time)
{
    struct stat status = {};
    if (stat(file.c_str(), &status) != 0)
        return false;
    const auto made = std::chrono::seconds(status.st_mtim.tv_sec)
        + std::chrono::nanoseconds(status.st_mtim.tv_nsec);
    return made > time.time_since_epoch();
}

} // namespace

SessionVariables SessionVariables::ofCaller()
{
    SessionVariables session;
    if (!displayIsLocal())
        return session;
    for (const char *name : variables) {
        const std::string value = valueOf(name);
        if (value.empty() || hasControlCharacters(value))
            session.m_absent.emplace_back(name);
        else
            session.m_assignments.push_back(name + ("=" + value));
    }
    const std::string bus = valueOf(busVariable);
    if (!bus.empty() && !hasControlCharacters(bus) && !isTheManagersBus(bus))
        session.m_assignments.push_back(busVariable + ("=" + bus));
    return session;
}

bool SessionVariables::areThoseOf(const std::map<std::string, std::string> &environment,
                                  system_clock::time_point started) const
{
    const auto has = [&](const std::string &assignment) {
        const size_t equals = assignment.find('=');
        const auto found = environment.find(assignment.substr(0, equals));
        return found != environment.end() && found->second == assignment.substr(equals + 1);
    };
    const auto lacks = [&](const std::string &name) {
        return !environment.contains(name);
    };
    return std::ranges::all_of(m_assignments, has) && std::ranges::all_of(m_absent, lacks)
        && std::ranges::none_of(displaySockets(), [&](const std::string &socket) {
               return isYoungerThan(socket, started);
           });
}

std::map<std::string, std::string> environmentOf(int pid)
{
    std::ifstream file("/proc/" + std::to_string(pid) + "/environ", std::ios::binary);
    std::map<std::string, std::string> environment;
    std::string line;
    while (std::getline(file, line, '\0')) {
        const size_t equals = line.find('=');
        if (equals != std::string::npos)
            environment.emplace(line.substr(0, equals), line.substr(equals + 1));
    }
    return environment;
}

} // namespace velq::launchagent
