#include "nettools/lib/SystemProgram.h"

#include <cstdlib>
#include <filesystem>
#include <unistd.h>

namespace velq::nettools
{

namespace
{

// A helper in a bundle may be a link to where it was built; both folders are then its own.
bool isThisProgram(const std::filesystem::path &file)
{
    std::error_code error;
    return std::filesystem::equivalent(file, "/proc/self/exe", error);
}

} // namespace

std::string systemProgram(std::string_view name)
{
    const char *path = std::getenv("PATH");
    std::string_view rest = path != nullptr ? path : "/usr/sbin:/usr/bin:/sbin:/bin";
    while (!rest.empty()) {
        const std::string_view folder = rest.substr(0, rest.find(':'));
        rest.remove_prefix(std::min(rest.size(), folder.size() + 1));
        const std::filesystem::path file = std::filesystem::path(folder) / name;
        if (folder.starts_with('/') && access(file.c_str(), X_OK) == 0 && !isThisProgram(file))
            return file;
    }
    return {};
}

} // namespace velq::nettools
