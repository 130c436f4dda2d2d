#include "nettools/lib/Options.h"

namespace velq::nettools
{

Options readOptions(Arguments arguments, std::string_view allowed)
{
    Options options;
    for (const std::string_view argument : arguments) {
        if (argument.size() < 2 || argument.front() != '-') {
            options.complaint = "unexpected argument '" + std::string(argument) + "'";
            return options;
        }
        const std::string_view letters = argument.substr(1);
        if (letters.find_first_not_of(allowed) != std::string_view::npos) {
            options.complaint = "unknown option '" + std::string(argument) + "'";
            return options;
        }
        options.letters += letters;
    }
    return options;
}

} // namespace velq::nettools
