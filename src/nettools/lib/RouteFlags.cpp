#include "nettools/lib/RouteFlags.h"

#include <string_view>

namespace velq::nettools
{

std::string flagLetters(uint32_t flags)
{
    constexpr std::string_view letters = "UGHRDmCLS1WcBbIirg";
    std::string text;
    for (size_t bit = 0; bit < letters.size(); ++bit) {
        if ((flags & (1U << bit)) != 0)
            text += letters[bit];
    }
    return text;
}

} // namespace velq::nettools
