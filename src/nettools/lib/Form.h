#pragma once

#include <string_view>

namespace velq::nettools
{

/// One way to call a tool that can be called in many.
struct Form {
    std::string_view name;
    std::string_view
        arguments;            ///< a word each; "..." for one or more of the last, "A|B" for either
    std::string_view summary; ///< one sentence
};

} // namespace velq::nettools
