#pragma once

#include <functional>
#include <string>
#include <vector>

namespace velq::testing
{

/// A folder of its own for a test's property lists, gone with it. Root's tests act in it as another
/// user where rights matter.
class ListFolder
{
public:
    ListFolder();
    ListFolder(const ListFolder &) = delete;
    ListFolder &operator=(const ListFolder &) = delete;
    ~ListFolder();

    std::string path(const std::string &name) const;
    /// Returns the file's path.
    std::string write(const std::string &name, const std::string &bytes) const;
    std::string read(const std::string &path) const;
    /// Of all files, hidden ones too, in order.
    std::vector<std::string> names() const;

    /// Makes a process of root's one of a user who has all rights to the folder.
    void becomeItsUser() const;

private:
    std::string m_path;
};

/// Runs it in a child process, which ends with what it returns.
int inChild(const std::function<int()> &work);

/// A list with these entries in its dictionary.
std::string list(const std::string &entries);

/// The change that sets a text.
std::function<bool(void *)> setting(const std::string &key, const std::string &value);

/// The text under the key; "(none)" when there is none.
std::string textIn(const std::string &file, const std::string &key);

} // namespace velq::testing
