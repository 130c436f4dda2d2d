#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velq::nettools
{

/// A domain of user settings.
struct Domain {
    std::string name; ///< as messages show it
    std::string path; ///< of its property list
    bool isOfUser;    ///< whether the list lies in the home folder, not where a path says
};

/// The domain of a name ("com.zelmor.Velq"), of an absolute path with or without ".plist", or of
/// "-g", "-globalDomain" or "NSGlobalDomain", what all programs share. Nothing for other texts.
std::optional<Domain> domainNamed(std::string_view text);

/// All domains of the user that have a list, in the order of their names.
std::vector<Domain> everyDomain();

} // namespace velq::nettools
