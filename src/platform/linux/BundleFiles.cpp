#include "platform/BundleFiles.h"

#include "platform/linux/posix/Descriptor.h"
#include "platform/linux/propertylist/FileLock.h"
#include "platform/linux/propertylist/ListFile.h"

#include <QFile>

#include <fcntl.h>
#include <filesystem>
#include <unistd.h>

namespace velq
{

namespace
{

namespace fs = std::filesystem;

fs::path nativePath(const QString &path)
{
    return QFile::encodeName(path).toStdString();
}

class BundleCopy
{
public:
    explicit BundleCopy(const fs::path &from)
        : m_root(fs::canonical(from))
    {
    }

    // Throws fs::filesystem_error.
    void copyFolder(const fs::path &from, const fs::path &to) const
    {
        fs::create_directory(to);
        for (const auto &entry : fs::directory_iterator(from))
            copyEntry(entry, to / entry.path().filename());
        // Its owner must be able to remove the copy again.
        fs::permissions(to, fs::status(from).permissions() | fs::perms::owner_write);
    }

private:
    void copyEntry(const fs::directory_entry &entry, const fs::path &to) const
    {
        if (entry.is_symlink())
            copyLink(entry.path(), to);
        else if (entry.is_directory())
            copyFolder(entry.path(), to);
        else
            fs::copy_file(entry.path(), to);
    }

    void copyLink(const fs::path &link, const fs::path &to) const
    {
        if (fs::is_regular_file(link) && leadsOut(link))
            fs::copy_file(link, to);
        else
            fs::copy_symlink(link, to);
    }

    // An absolute one leads to this bundle and not to the copy.
    bool leadsOut(const fs::path &link) const
    {
        const fs::path inside = fs::canonical(link).lexically_relative(m_root);
        return fs::read_symlink(link).is_absolute() || *inside.begin() == "..";
    }

    fs::path m_root;
};

// A copy that a power failure cuts must not be there by name.
void writeOut(const fs::path &folder)
{
    const posix::Descriptor file(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    (void)syncfs(file.get());
}

void copyAt(const fs::path &from, const fs::path &to)
{
    const fs::path fresh = propertylist::besideFile(to, ".new");
    fs::remove_all(fresh);
    try {
        BundleCopy(from).copyFolder(from, fresh);
        writeOut(fresh);
        fs::rename(fresh, to);
    } catch (const fs::filesystem_error &) {
        std::error_code ignored;
        fs::remove_all(fresh, ignored);
        throw;
    }
}

} // namespace

bool BundleFiles::copy(const QString &from, const QString &to)
{
    if (from.isEmpty() || to.isEmpty())
        return false;
    const fs::path target = nativePath(to);
    const propertylist::FileLock lock(target);
    std::error_code ignored;
    if (lock.error() || fs::exists(fs::symlink_status(target, ignored)))
        return false;
    try {
        copyAt(nativePath(from), target);
        return true;
    } catch (const fs::filesystem_error &) {
        return false;
    }
}

bool BundleFiles::remove(const QString &path)
{
    if (path.isEmpty())
        return false;
    const fs::path target = nativePath(path);
    const propertylist::FileLock lock(target);
    if (lock.error())
        return false;
    const fs::path old = propertylist::besideFile(target, ".old");
    std::error_code error;
    fs::remove_all(old, error);
    fs::rename(target, old, error);
    const bool gone = !error;
    fs::remove_all(old, error);
    return gone;
}

} // namespace velq
