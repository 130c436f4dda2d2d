#include "nettools/lib/PersonFolders.h"

#include <cstdlib>
#include <pwd.h>
#include <unistd.h>

namespace velq::nettools
{

std::string homeFolder()
{
    if (const char *home = std::getenv("HOME"); home != nullptr && *home == '/')
        return home;
    const passwd *user = getpwuid(getuid());
    return user != nullptr ? user->pw_dir : "/";
}

std::string baseFolder(const char *variable, const char *belowHome)
{
    if (const char *folder = std::getenv(variable); folder != nullptr && *folder == '/')
        return folder;
    return homeFolder().append("/").append(belowHome);
}

} // namespace velq::nettools
