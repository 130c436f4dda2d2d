#include "unit/platform/propertylist/ListFolder.h"

#include "platform/linux/propertylist/DictionaryFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <plist/plist.h>
#include <sys/wait.h>
#include <unistd.h>

namespace velq::testing
{

namespace
{

namespace fs = std::filesystem;

constexpr uid_t otherUser = 12345;

} // namespace

ListFolder::ListFolder()
    : m_path(fs::temp_directory_path() / "velq-lists-XXXXXX")
{
    EXPECT_NE(mkdtemp(m_path.data()), nullptr);
}

ListFolder::~ListFolder()
{
    std::error_code ignored;
    fs::permissions(m_path, fs::perms::owner_all, ignored);
    fs::remove_all(m_path, ignored);
}

std::string ListFolder::path(const std::string &name) const
{
    return m_path + "/" + name;
}

std::string ListFolder::write(const std::string &name, const std::string &bytes) const
{
    std::ofstream(path(name), std::ios::binary) << bytes;
    return path(name);
}

std::string ListFolder::read(const std::string &path) const
{
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file.is_open()) << path;
    return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<std::string> ListFolder::names() const
{
    std::vector<std::string> names;
    for (const auto &entry : fs::directory_iterator(m_path))
        names.push_back(entry.path().filename());
    std::ranges::sort(names);
    return names;
}

void ListFolder::becomeItsUser() const
{
    if (getuid() != 0)
        return;
    if (chown(m_path.c_str(), otherUser, otherUser) != 0 || setgid(otherUser) != 0
        || setuid(otherUser) != 0)
        _exit(125);
}

int inChild(const std::function<int()> &work)
{
    const pid_t child = fork();
    if (child == 0)
        _exit(work() & 0xff);
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status)) << status;
    return static_cast<signed char>(WEXITSTATUS(status));
}

std::string list(const std::string &entries)
{
    return "<plist version=\"1.0\"><dict>" + entries + "</dict></plist>";
}

std::function<bool(void *)> setting(const std::string &key, const std::string &value)
{
    return [key, value](void *dictionary) {
        plist_dict_set_item(dictionary, key.c_str(), plist_new_string(value.c_str()));
        return true;
    };
}

std::string textIn(const std::string &file, const std::string &key)
{
    const auto read = propertylist::readDictionary(file);
    EXPECT_FALSE(read.error) << file << ": " << read.error.message();
    plist_t item =
        read.dictionary ? plist_dict_get_item(read.dictionary.get(), key.c_str()) : nullptr;
    return item == nullptr ? "(none)" : plist_get_string_ptr(item, nullptr);
}

} // namespace velq::testing
