#pragma once

#include <string>
#include <string_view>
#include <system_error>

namespace velq::propertylist
{

/// The bytes of a file, or why there are none: no such file, no right to read it, no regular file,
/// more than a property list may have.
struct FileBytes {
    std::string bytes;
    std::error_code error;

    bool isMissing() const { return error == std::errc::no_such_file_or_directory; }
};
FileBytes readFile(const std::string &path);

/// Where the symbolic links at `path` lead; the path itself when there are none. The file need not
/// exist.
std::string linkTarget(const std::string &path);

/// The path of a hidden file beside the one at `path`: ".NAME" and `suffix`.
std::string besideFile(const std::string &path, std::string_view suffix);

/// Puts `bytes` in the place of the file at `path` (no symbolic link), so that at every moment,
/// whatever fails or dies, it is wholly the old or wholly the new one. Owner and mode of the old
/// one are kept; a new one is its owner's alone. Under the file's lock.
std::error_code replaceFile(const std::string &path, std::string_view bytes);

/// Renames the file at `path` to NAME.corrupt-TIME, TIME being now in UTC, and says to what; empty
/// when it cannot be renamed. Never in the place of another file.
std::string putAside(const std::string &path);

/// Makes the folder of the file at `path` if it is missing, parents too, each its owner's alone.
std::error_code makeFolderOf(const std::string &path);

} // namespace velq::propertylist
