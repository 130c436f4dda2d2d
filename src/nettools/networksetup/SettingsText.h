#pragma once

#include <map>
#include <string>
#include <string_view>

namespace velq::nettools
{

/// The values of settings by "SCHEMA KEY", as gsettings(1) lists them: one a line, behind both.
std::map<std::string, std::string> settingsIn(std::string_view listing);

/// A text as it stands among those values and is given to be set: in quotes, with escapes.
std::string quotedSetting(std::string_view text);
/// The text of such a value; empty when it is none.
std::string unquotedSetting(std::string_view value);

} // namespace velq::nettools
