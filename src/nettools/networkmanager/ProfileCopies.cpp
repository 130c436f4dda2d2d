#include "nettools/networkmanager/ProfileCopies.h"

#include "platform/linux/posix/Descriptor.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace velq::nettools
{

namespace
{

std::string environment(const char *name)
{
    const char *value = std::getenv(name);
    return value != nullptr && *value == '/' ? value : "";
}

std::string folderOfCaller()
{
    if (geteuid() == 0)
        return "/var/lib/velq/profiles";
    if (const std::string state = environment("XDG_STATE_HOME"); !state.empty())
        return state + "/velq/profiles";
    const std::string home = environment("HOME");
    return home.empty() ? "" : home + "/.local/state/velq/profiles";
}

// A UUID comes over the bus; as a file's name it must be nothing else.
bool isName(std::string_view uuid)
{
    return !uuid.empty() && std::ranges::all_of(uuid, [](char c) {
        return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F')
            || c == '-';
    });
}

bool writeAll(int descriptor, std::string_view text)
{
    while (!text.empty()) {
        const ssize_t written = write(descriptor, text.data(), text.size());
        if (written < 0 && errno != EINTR)
            return false;
        text.remove_prefix(static_cast<size_t>(std::max<ssize_t>(written, 0)));
    }
    return fsync(descriptor) == 0;
}

// The folders below the first one are nobody else's business.
bool makeFolder(const std::string &folder)
{
    const std::filesystem::path path(folder);
    std::error_code error;
    std::filesystem::create_directories(path.parent_path(), error);
    return mkdir(folder.c_str(), S_IRWXU) == 0 || errno == EEXIST;
}

} // namespace

ProfileCopies::ProfileCopies()
    : m_folder(folderOfCaller())
{
}

bool ProfileCopies::keep(const std::string &uuid, const std::string &text) const
{
    errno = EINVAL;
    if (m_folder.empty() || !isName(uuid) || !makeFolder(m_folder))
        return false;
    std::string temporary = m_folder + "/.new-XXXXXX";
    const posix::Descriptor file(mkostemp(temporary.data(), O_CLOEXEC));
    if (!file.isOpen())
        return false;
    // A link, unlike a renamed file, takes no other's place.
    const std::string path = m_folder + "/" + uuid;
    const bool kept = writeAll(file.get(), text)
        && (link(temporary.c_str(), path.c_str()) == 0 || errno == EEXIST);
    const int error = errno;
    (void)unlink(temporary.c_str());
    errno = error;
    return kept;
}

std::optional<std::string> ProfileCopies::copyOf(const std::string &uuid) const
{
    if (m_folder.empty() || !isName(uuid))
        return std::nullopt;
    const posix::Descriptor file(
        open((m_folder + "/" + uuid).c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW));
    if (!file.isOpen())
        return std::nullopt;
    std::string text;
    std::array<char, 4096> part{};
    ssize_t got = 0;
    while ((got = read(file.get(), part.data(), part.size())) > 0)
        text.append(part.data(), static_cast<size_t>(got));
    return got < 0 ? std::nullopt : std::optional(text);
}

void ProfileCopies::remove(const std::string &uuid) const
{
    if (!m_folder.empty() && isName(uuid))
        (void)unlink((m_folder + "/" + uuid).c_str());
}

} // namespace velq::nettools
