#include "daemon/Grants.h"

#include "platform/linux/posix/Descriptor.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <optional>
#include <pwd.h>
#include <sys/stat.h>
#include <utility>
#include <vector>

namespace velq::daemon
{

namespace
{

constexpr std::array folders{"etc", "velq", "authorized.d"};
constexpr int careful = O_RDONLY | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;

bool isOnlyWritableBy(uid_t owner, const struct stat &status)
{
    return status.st_uid == owner && (status.st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

bool isSafe(const posix::Descriptor &descriptor, uid_t owner, mode_t type)
{
    struct stat status {
    };
    return descriptor.isOpen() && fstat(descriptor.get(), &status) == 0
        && (status.st_mode & S_IFMT) == type && isOnlyWritableBy(owner, status);
}

// Link by link, so that none of them is a symbolic one.
posix::Descriptor openFolder(const std::string &root, uid_t owner)
{
    posix::Descriptor folder(open(root.c_str(), careful | O_DIRECTORY));
    for (const char *name : folders) {
        if (!isSafe(folder, owner, S_IFDIR))
            return posix::Descriptor();
        folder = posix::Descriptor(openat(folder.get(), name, careful | O_DIRECTORY));
    }
    return isSafe(folder, owner, S_IFDIR) ? std::move(folder) : posix::Descriptor();
}

std::string contentOf(const posix::Descriptor &file, size_t atMost)
{
    std::string content(atMost, '\0');
    const ssize_t count = read(file.get(), content.data(), content.size());
    content.resize(count > 0 ? static_cast<size_t>(count) : 0);
    return content;
}

std::optional<std::string> nameOfUser(uid_t uid)
{
    std::vector<char> buffer(1024);
    passwd entry{};
    passwd *found = nullptr;
    int result = 0;
    while ((result = getpwuid_r(uid, &entry, buffer.data(), buffer.size(), &found)) == ERANGE)
        buffer.resize(buffer.size() * 2);
    if (result != 0 || found == nullptr)
        return std::nullopt;
    return found->pw_name;
}

} // namespace

Grants::Grants(std::string root, uid_t owner)
    : m_root(std::move(root))
    , m_owner(owner)
{
}

std::string Grants::objectionTo(uid_t uid) const
{
    const posix::Descriptor folder = openFolder(m_root, m_owner);
    if (!folder.isOpen())
        return "the folder of grants is missing or not safe";
    const std::string number = std::to_string(uid);
    const posix::Descriptor file(openat(folder.get(), number.c_str(), careful));
    if (!file.isOpen())
        return errno == ENOENT ? "no grant" : "the grant cannot be opened";
    if (!isSafe(file, m_owner, S_IFREG))
        return "the grant is not safe";
    const std::optional<std::string> name = nameOfUser(uid);
    if (!name)
        return "no such user";
    const std::string expected = number + ' ' + *name + '\n';
    return contentOf(file, expected.size() + 1) == expected ? "" : "the grant is another's";
}

} // namespace velq::daemon
