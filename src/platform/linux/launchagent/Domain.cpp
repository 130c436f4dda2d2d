#include "platform/linux/launchagent/Domain.h"

#include <cstdlib>
#include <pwd.h>
#include <unistd.h>

namespace velq::launchagent
{

namespace
{

using std::filesystem::path;

// Relative paths in these variables are to be ignored, as the XDG rules for base directories have
// it.
path absoluteFromEnvironment(const char *name, const path &otherwise)
{
    const char *value = std::getenv(name);
    return value != nullptr && *value == '/' ? path(value) : otherwise;
}

path home()
{
    const passwd *person = getpwuid(geteuid());
    return absoluteFromEnvironment("HOME", person != nullptr ? person->pw_dir : "/");
}

} // namespace

Domain Domain::ofPerson()
{
    const path configuration = absoluteFromEnvironment("XDG_CONFIG_HOME", home() / ".config");
    const path runtime =
        absoluteFromEnvironment("XDG_RUNTIME_DIR", "/run/user/" + std::to_string(geteuid()));
    return {false, configuration / "systemd/user", configuration / "autostart",
            runtime / "systemd/private", "graphical-session.target"};
}

Domain Domain::ofCaller()
{
    if (geteuid() != 0)
        return ofPerson();
    return {true, "/etc/systemd/system", {}, "/run/systemd/private", "multi-user.target"};
}

} // namespace velq::launchagent
