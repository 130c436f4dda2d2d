#include "platform/linux/propertylist/FileLock.h"

#include "platform/linux/propertylist/ListFile.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace velq::propertylist
{

FileLock::FileLock(const std::string &path)
    : m_path(besideFile(path, ".lock"))
{
    do {
        m_file = posix::Descriptor(
            open(m_path.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0600));
        if (!m_file.isOpen()) {
            m_error = {errno, std::generic_category()};
            return;
        }
        while (flock(m_file.get(), LOCK_EX) != 0) {
            if (errno == EINTR)
                continue;
            m_error = {errno, std::generic_category()};
            return;
        }
    } while (!isCurrent());
}

// The holder before removes the file: who waited for that one has the lock of nothing.
bool FileLock::isCurrent() const
{
    struct stat mine = {};
    struct stat current = {};
    return fstat(m_file.get(), &mine) == 0 && lstat(m_path.c_str(), &current) == 0
        && mine.st_ino == current.st_ino && mine.st_dev == current.st_dev;
}

FileLock::~FileLock()
{
    if (m_error)
        return;
    unlink(m_path.c_str());
    // Closing alone would not free it while a child that was forked meanwhile has the descriptor.
    flock(m_file.get(), LOCK_UN);
}

} // namespace velq::propertylist
