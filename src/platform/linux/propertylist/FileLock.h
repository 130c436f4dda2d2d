#pragma once

#include "platform/linux/posix/Descriptor.h"

#include <string>
#include <system_error>

namespace velq::propertylist
{

/// Keeps other processes, and other threads of this one, from changing a file for as long as it
/// lives.
///
/// A hidden file of the owner's alone beside it carries the lock, and goes with it: a lock on the
/// file itself would be lost when it is replaced, and one on a file that others may read could be
/// held by them for ever. A lock file that a killed process leaves locks nothing, and is used
/// again.
class FileLock
{
public:
    /// Waits for the lock on the file at `path`, which need not exist; its folder must.
    explicit FileLock(const std::string &path);
    FileLock(const FileLock &) = delete;
    FileLock &operator=(const FileLock &) = delete;
    ~FileLock();

    /// Why there is no lock; empty when there is.
    std::error_code error() const { return m_error; }

private:
    bool isCurrent() const;

    std::string m_path;
    posix::Descriptor m_file;
    std::error_code m_error;
};

} // namespace velq::propertylist
