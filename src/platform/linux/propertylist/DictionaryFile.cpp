#include "platform/linux/propertylist/DictionaryFile.h"

#include "platform/linux/propertylist/FileLock.h"
#include "platform/linux/propertylist/ListFile.h"

#include <cerrno>
#include <cstdio>
#include <unistd.h>

#include <plist/plist.h>

namespace velq::propertylist
{

namespace
{

DictionaryRead dictionaryOf(const FileBytes &file)
{
    if (file.error)
        return {nullptr, file.error};
    Node root = parsed(file.bytes);
    if (root == nullptr || plist_get_node_type(root.get()) != PLIST_DICT)
        return {nullptr, std::make_error_code(std::errc::bad_message)};
    return {std::move(root), {}};
}

std::error_code writeAt(const std::string &target, void *dictionary)
{
    const auto xml = xmlOf(dictionary);
    if (!xml)
        return std::make_error_code(std::errc::illegal_byte_sequence);
    return replaceFile(target, *xml);
}

DictionaryEdited replaceDamaged(const std::string &target, const std::string &xml)
{
    std::string damaged = putAside(target);
    if (damaged.empty())
        return {{errno, std::generic_category()}, {}};
    const std::error_code error = replaceFile(target, xml);
    if (error && std::rename(damaged.c_str(), target.c_str()) == 0)
        damaged.clear();
    return {error, std::move(damaged)};
}

} // namespace

DictionaryRead readDictionary(const std::string &path)
{
    return dictionaryOf(readFile(path));
}

std::error_code writeDictionary(const std::string &path, void *dictionary)
{
    const std::string target = linkTarget(path);
    const FileLock lock(target);
    return lock.error() ? lock.error() : writeAt(target, dictionary);
}

DictionaryEdited editDictionary(const std::string &path, const std::function<bool(void *)> &change)
{
    const std::string target = linkTarget(path);
    const FileLock lock(target);
    if (lock.error())
        return {lock.error(), {}};
    DictionaryRead read = readDictionary(target);
    if (read.error && !read.isMissing() && !read.isDamaged())
        return {read.error, {}};
    const Node dictionary = read.dictionary ? std::move(read.dictionary) : Node(plist_new_dict());
    if (!change(dictionary.get()))
        return {};
    const auto xml = xmlOf(dictionary.get());
    if (!xml)
        return {std::make_error_code(std::errc::illegal_byte_sequence), {}};
    return read.isDamaged() ? replaceDamaged(target, *xml)
                            : DictionaryEdited{replaceFile(target, *xml), {}};
}

DictionaryEdited removeDictionary(const std::string &path)
{
    const std::string target = linkTarget(path);
    const FileLock lock(target);
    const DictionaryRead read = readDictionary(target);
    if (read.error && !read.isDamaged())
        return {read.error, {}};
    if (lock.error())
        return {lock.error(), {}};
    const std::string damaged = read.isDamaged() ? putAside(target) : std::string();
    const bool gone = read.isDamaged() ? !damaged.empty() : unlink(target.c_str()) == 0;
    if (!gone)
        return {{errno, std::generic_category()}, {}};
    return {{}, damaged};
}

} // namespace velq::propertylist
