#pragma once

#include "nettools/lib/Tool.h"

#include <string>
#include <string_view>

namespace velq::nettools
{

/// Options of one letter, alone ("-n -r") or together ("-nr"), in any order and number.
struct Options {
    std::string letters;
    std::string complaint; ///< what is wrong with the call; empty when nothing is

    bool has(char letter) const { return letters.find(letter) != std::string::npos; }
};

/// Reads arguments that are nothing but options out of `allowed`.
Options readOptions(Arguments arguments, std::string_view allowed);

} // namespace velq::nettools
