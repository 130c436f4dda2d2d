#include "platform/linux/propertylist/ListFile.h"

#include "platform/linux/posix/Descriptor.h"
#include "platform/linux/propertylist/Node.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace velq::propertylist
{

namespace
{

namespace fs = std::filesystem;

std::error_code lastError()
{
    return {errno, std::generic_category()};
}

std::error_code readAll(int file, std::string &bytes)
{
    std::array<char, 65536> part{};
    while (bytes.size() <= largestList) {
        const ssize_t got = read(file, part.data(), part.size());
        if (got == 0)
            return {};
        if (got > 0)
            bytes.append(part.data(), static_cast<size_t>(got));
        else if (errno != EINTR)
            return lastError();
    }
    return std::make_error_code(std::errc::file_too_large);
}

bool writeAll(int file, std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t written = write(file, bytes.data(), bytes.size());
        if (written >= 0)
            bytes.remove_prefix(static_cast<size_t>(written));
        else if (errno != EINTR)
            return false;
    }
    return true;
}

// A file of another's keeps its owner where this process may say so, and its group's rights only
// with its group.
bool takeAttributes(int file, const std::string &from)
{
    struct stat old = {};
    if (stat(from.c_str(), &old) != 0)
        return errno == ENOENT;
    const bool owned = fchown(file, old.st_uid, old.st_gid) == 0;
    const mode_t mode = old.st_mode & (owned ? 0777U : 0700U);
    return fchmod(file, mode) == 0;
}

std::error_code writeNew(const std::string &fresh, std::string_view bytes, const std::string &old)
{
    const posix::Descriptor file(
        open(fresh.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    if (!file.isOpen() || !takeAttributes(file.get(), old) || !writeAll(file.get(), bytes)
        || fsync(file.get()) != 0)
        return lastError();
    return {};
}

void syncFolder(const std::string &path)
{
    const posix::Descriptor folder(open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    // Some file systems cannot; the rename is done all the same.
    (void)fsync(folder.get());
}

std::string folderOf(const std::string &path)
{
    const fs::path parent = fs::path(path).parent_path();
    return parent.empty() ? "." : parent.string();
}

} // namespace

FileBytes readFile(const std::string &path)
{
    FileBytes result;
    // Without O_NONBLOCK a FIFO would hold the reader up until somebody writes.
    const posix::Descriptor file(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    struct stat status = {};
    if (!file.isOpen() || fstat(file.get(), &status) != 0)
        result.error = lastError();
    else if (!S_ISREG(status.st_mode))
        result.error = std::make_error_code(S_ISDIR(status.st_mode) ? std::errc::is_a_directory
                                                                    : std::errc::invalid_argument);
    else
        result.error = readAll(file.get(), result.bytes);
    return result;
}

std::string linkTarget(const std::string &path)
{
    constexpr int mostLinks = 40;
    fs::path target = path;
    for (int i = 0; i < mostLinks; ++i) {
        std::error_code error;
        const fs::path next = fs::read_symlink(target, error);
        if (error)
            break;
        target = target.parent_path() / next;
    }
    return target.string();
}

std::string besideFile(const std::string &path, std::string_view suffix)
{
    const fs::path file = path;
    return (file.parent_path() / ("." + file.filename().string())).string().append(suffix);
}

std::error_code replaceFile(const std::string &path, std::string_view bytes)
{
    // Always the same name, so that killed writers do not leave one more file each.
    const std::string fresh = besideFile(path, ".new");
    unlink(fresh.c_str());
    std::error_code error = writeNew(fresh, bytes, path);
    if (!error && rename(fresh.c_str(), path.c_str()) != 0)
        error = lastError();
    if (error)
        unlink(fresh.c_str());
    else
        syncFolder(folderOf(path));
    return error;
}

std::string putAside(const std::string &path)
{
    std::array<char, 32> time{};
    const std::time_t now = std::time(nullptr);
    std::tm parts = {};
    gmtime_r(&now, &parts);
    (void)std::strftime(time.data(), time.size(), ".corrupt-%Y%m%dT%H%M%SZ", &parts);
    const std::string base = path + time.data();
    std::string name = base;
    for (int number = 2; number < 1000; ++number) {
        if (renameat2(AT_FDCWD, path.c_str(), AT_FDCWD, name.c_str(), RENAME_NOREPLACE) == 0)
            return name;
        if (errno != EEXIST)
            break;
        name = base + "-" + std::to_string(number);
    }
    return {};
}

std::error_code makeFolderOf(const std::string &path)
{
    const std::filesystem::path folder = std::filesystem::path(path).parent_path();
    if (folder.empty() || mkdir(folder.c_str(), 0700) == 0 || errno == EEXIST)
        return {};
    if (errno != ENOENT || folder == folder.root_path())
        return {errno, std::generic_category()};
    if (const std::error_code error = makeFolderOf(folder))
        return error;
    return makeFolderOf(path);
}

} // namespace velq::propertylist
