#include "nettools/networksetup/Person.h"

#include "nettools/networksetup/Backend.h"
#include "nettools/networksetup/SessionBus.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <grp.h>
#include <optional>
#include <pwd.h>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <unistd.h>

namespace velq::nettools
{

namespace
{

// Which settings a desktop reads, and where: root's own, or those that were left by sudo, are not
// the person's.
constexpr std::array sessionVariables{
    "XDG_CURRENT_DESKTOP", "XDG_CONFIG_HOME",   "XDG_CONFIG_DIRS",
    "XDG_STATE_HOME",      "XDG_DATA_HOME",     "XDG_DATA_DIRS",
    "XDG_CACHE_HOME",      "GSETTINGS_BACKEND", "DCONF_PROFILE",
};

// A copy: the system's own is overwritten by whoever looks up the next one.
struct Person {
    std::string name;
    std::string home;
    uid_t user;
    gid_t group;
};

std::optional<uid_t> userFrom(std::string_view text)
{
    uid_t user = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), user);
    if (error != std::errc() || end != text.data() + text.size() || user == static_cast<uid_t>(-1))
        return std::nullopt;
    return user;
}

const char *caller()
{
    for (const char *name : {"VELQ_UID", "SUDO_UID", "PKEXEC_UID"}) {
        if (const char *value = std::getenv(name); value != nullptr)
            return value;
    }
    return nullptr;
}

Person personOf(const char *number)
{
    const std::optional<uid_t> user = userFrom(number);
    const passwd *entry = user ? getpwuid(*user) : nullptr;
    if (entry == nullptr)
        throw Refusal(std::string("nobody here has the number '") + number + "'");
    return {entry->pw_name, entry->pw_dir, entry->pw_uid, entry->pw_gid};
}

void give(const char *name, const std::string &value)
{
    (void)setenv(name, value.c_str(), 1);
}

void drop(const Person &person)
{
    if (initgroups(person.name.c_str(), person.group) != 0
        || setresgid(person.group, person.group, person.group) != 0
        || setresuid(person.user, person.user, person.user) != 0)
        throw Refusal("cannot become " + person.name + ": " + std::strerror(errno));
    if (chdir(person.home.c_str()) != 0 && chdir("/") != 0)
        throw Refusal(std::string("cannot leave this folder: ") + std::strerror(errno));
}

void setEnvironment(const Person &person)
{
    const std::string runtime = "/run/user/" + std::to_string(person.user);
    for (const char *name : sessionVariables)
        (void)unsetenv(name);
    give("HOME", person.home);
    give("USER", person.name);
    give("LOGNAME", person.name);
    give("XDG_RUNTIME_DIR", runtime);
    give("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + runtime + "/bus");
}

void takeOver(std::string_view assignment)
{
    const size_t equals = assignment.find('=');
    const auto *known = std::ranges::find(sessionVariables, assignment.substr(0, equals),
                                          [](const char *name) { return std::string_view(name); });
    if (equals != std::string_view::npos && known != sessionVariables.end())
        give(*known, std::string(assignment.substr(equals + 1)));
}

// A person who is not logged in has none, and only their files to go by.
void askServiceManager()
{
    constexpr uint64_t patience = 2'000'000;
    const SessionBus bus = openSessionBus();
    if (bus == nullptr)
        return;
    (void)sd_bus_set_method_call_timeout(bus.get(), patience);
    char **environment = nullptr;
    (void)sd_bus_get_property_strv(bus.get(), "org.freedesktop.systemd1",
                                   "/org/freedesktop/systemd1", "org.freedesktop.systemd1.Manager",
                                   "Environment", nullptr, &environment);
    for (char **assignment = environment; assignment != nullptr && *assignment != nullptr;
         ++assignment) {
        takeOver(*assignment);
        std::free(*assignment);
    }
    std::free(static_cast<void *>(environment));
}

} // namespace

void becomePerson()
{
    const char *number = geteuid() == 0 ? caller() : nullptr;
    if (number == nullptr)
        return;
    const Person person = personOf(number);
    if (person.user == 0)
        return;
    drop(person);
    setEnvironment(person);
    askServiceManager();
}

} // namespace velq::nettools
