#include "nettools/networksetup/SettingsText.h"

#include <algorithm>

namespace velq::nettools
{

std::map<std::string, std::string> settingsIn(std::string_view listing)
{
    std::map<std::string, std::string> settings;
    while (!listing.empty()) {
        const std::string_view line = listing.substr(0, listing.find('\n'));
        listing.remove_prefix(std::min(listing.size(), line.size() + 1));
        const size_t schema = line.find(' ');
        const size_t key =
            schema == std::string_view::npos ? std::string_view::npos : line.find(' ', schema + 1);
        if (key != std::string_view::npos)
            settings.emplace(line.substr(0, key), line.substr(key + 1));
    }
    return settings;
}

std::string quotedSetting(std::string_view text)
{
    std::string quoted = "'";
    for (const char c : text) {
        if (c == '\'' || c == '\\')
            quoted += '\\';
        quoted += c;
    }
    return quoted += '\'';
}

std::string unquotedSetting(std::string_view value)
{
    constexpr size_t quotes = 2;
    if (value.size() < quotes || (value.front() != '\'' && value.front() != '"')
        || value.back() != value.front())
        return {};
    value = value.substr(1, value.size() - quotes);
    std::string text;
    for (size_t i = 0; i < value.size(); ++i) {
        if (value[i] == '\\' && i + 1 < value.size())
            ++i;
        text += value[i];
    }
    return text;
}

} // namespace velq::nettools
