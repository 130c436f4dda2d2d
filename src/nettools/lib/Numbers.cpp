#include "nettools/lib/Numbers.h"

#include <array>
#include <charconv>
#include <string_view>

namespace velq::nettools
{

void appendNumber(std::string &out, unsigned number, int base)
{
    std::array<char, 12> digits{};
    char *begin = digits.data();
    const char *end = std::to_chars(begin, begin + digits.size(), number, base).ptr;
    out.append(std::string_view(begin, end));
}

} // namespace velq::nettools
