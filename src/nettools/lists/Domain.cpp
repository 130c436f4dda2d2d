#include "nettools/lists/Domain.h"

#include "nettools/lib/PersonFolders.h"

#include <algorithm>
#include <array>
#include <filesystem>

namespace velq::nettools
{

namespace
{

constexpr std::string_view ending = ".plist";
constexpr std::string_view globalFile = ".GlobalPreferences";
constexpr std::string_view globalName = "kCFPreferencesAnyApplication";

std::string preferencesFolder()
{
    return homeFolder() + "/Library/Preferences";
}

Domain userDomain(std::string_view name, std::string_view file)
{
    return {std::string(name), preferencesFolder().append("/").append(file).append(ending), true};
}

bool isGlobal(std::string_view text)
{
    constexpr std::array names{"-g", "-globalDomain", "NSGlobalDomain"};
    return std::ranges::find(names, text) != names.end();
}

} // namespace

std::optional<Domain> domainNamed(std::string_view text)
{
    if (isGlobal(text))
        return userDomain(globalName, globalFile);
    if (text.starts_with('/')) {
        std::string path(text);
        if (!text.ends_with(ending))
            path.append(ending);
        return Domain{std::string(text), path, false};
    }
    if (text.empty() || text.starts_with('-') || text.find('/') != std::string_view::npos)
        return std::nullopt;
    return userDomain(text, text);
}

std::vector<Domain> everyDomain()
{
    std::vector<Domain> domains;
    std::error_code ignored;
    for (const auto &entry : std::filesystem::directory_iterator(preferencesFolder(), ignored)) {
        const std::filesystem::path &file = entry.path();
        if (file.extension() != ending)
            continue;
        if (file.stem() == globalFile)
            domains.push_back(userDomain("Apple Global Domain", globalFile));
        else if (!file.filename().string().starts_with('.'))
            domains.push_back(userDomain(file.stem().string(), file.stem().string()));
    }
    std::ranges::sort(domains, {}, &Domain::name);
    return domains;
}

} // namespace velq::nettools
