#include "platform/linux/launchagent/Agent.h"

#include "platform/linux/launchagent/Error.h"
#include "platform/linux/propertylist/DictionaryFile.h"

#include <algorithm>
#include <filesystem>
#include <plist/plist.h>
#include <unistd.h>

namespace velq::launchagent
{

namespace
{

using propertylist::Node;

constexpr size_t longestLabel = 200;

Error unreadable(const std::string &path, const std::string &reason)
{
    return Error{"cannot read '" + path + "': " + reason};
}

Node dictionaryAt(const std::string &path)
{
    propertylist::DictionaryRead read = propertylist::readDictionary(path);
    if (read.isDamaged() || read.error == std::errc::invalid_argument)
        throw unreadable(path, "not a property list");
    if (read.dictionary == nullptr)
        throw unreadable(path, read.error.message());
    return std::move(read.dictionary);
}

plist_t item(const Node &dictionary, const char *key, plist_type type)
{
    plist_t node = plist_dict_get_item(dictionary.get(), key);
    return node != nullptr && plist_get_node_type(node) == type ? node : nullptr;
}

std::string text(const Node &dictionary, const char *key)
{
    plist_t node = item(dictionary, key, PLIST_STRING);
    uint64_t length = 0;
    const char *value = node == nullptr ? nullptr : plist_get_string_ptr(node, &length);
    return value == nullptr ? std::string() : std::string(value, length);
}

bool boolean(const Node &dictionary, const char *key)
{
    plist_t node = item(dictionary, key, PLIST_BOOLEAN);
    uint8_t value = 0;
    if (node != nullptr)
        plist_get_bool_val(node, &value);
    return value != 0;
}

std::optional<int64_t> integer(const Node &dictionary, const char *key)
{
    plist_t node = item(dictionary, key, PLIST_UINT);
    if (node == nullptr)
        return std::nullopt;
    uint64_t value = 0;
    plist_get_uint_val(node, &value);
    return static_cast<int64_t>(value);
}

bool isAsciiLetterOrDigit(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

// A unit file has no way to write a line's end into a path, and reads blanks and a backslash at a
// line's end as something else.
bool fitsIntoALine(std::string_view path)
{
    return std::ranges::none_of(path, [](unsigned char c) { return c < 0x20 || c == 0x7f; })
        && path.back() != ' ' && path.back() != '\\';
}

} // namespace

bool isLabel(std::string_view text)
{
    return !text.empty() && text.size() <= longestLabel && isAsciiLetterOrDigit(text.front())
        && std::ranges::all_of(text, [](char c) {
               return isAsciiLetterOrDigit(c) || c == '.' || c == '-' || c == '_';
           });
}

Agent readAgent(const std::string &path)
{
    const Node root = dictionaryAt(path);
    Agent agent;
    agent.propertyList = std::filesystem::absolute(path).lexically_normal().string();
    agent.label = text(root, "Label");
    agent.program = text(root, "Program");
    agent.version = integer(root, "Version");
    agent.keepAlive = boolean(root, "KeepAlive");
    if (agent.label.empty())
        throw Error("'" + path + "' has no Label");
    if (!isLabel(agent.label))
        throw Error("the Label in '" + path + "' cannot be a service's name");
    return agent;
}

void requireProgram(const Agent &agent)
{
    if (agent.program.empty())
        throw Error("'" + agent.propertyList + "' has no Program");
    if (agent.program.front() != '/')
        throw Error("the Program in '" + agent.propertyList + "' is not an absolute path");
    if (!fitsIntoALine(agent.program) || !fitsIntoALine(agent.propertyList))
        throw Error("the paths of the agent " + agent.label
                    + " cannot be written into a unit file");
    if (!std::filesystem::is_regular_file(agent.program)
        || access(agent.program.c_str(), X_OK) != 0)
        throw Error("the Program of the agent " + agent.label + " cannot be executed: '"
                    + agent.program + "'");
}

} // namespace velq::launchagent
