#include "daemon/Options.h"

#include <charconv>
#include <string>
#include <string_view>

namespace velq::daemon
{

namespace
{

constexpr double longest = 86400;

std::chrono::microseconds secondsFrom(const std::string &option, std::string_view word)
{
    double seconds = 0;
    const char *end = word.data() + word.size();
    const auto [stop, error] = std::from_chars(word.data(), end, seconds, std::chars_format::fixed);
    if (error != std::errc() || stop != end || !(seconds >= 0.001 && seconds <= longest))
        throw BadOptions(option + " takes seconds, 0.001 to 86400");
    return std::chrono::round<std::chrono::microseconds>(std::chrono::duration<double>(seconds));
}

} // namespace

const char usage[] = R"(usage: VelqDemon [--idle SECONDS] [--limit SECONDS]

Runs commands as root for the users that an administrator has allowed to ask for it, over the system
bus. The bus starts it.

  --idle SECONDS   leave after this long without a call (30)
  --limit SECONDS  end a command that runs longer (60)
  --help           say this
)";

Options optionsFrom(std::span<char *const> words)
{
    Options options;
    while (!words.empty()) {
        const std::string option = words.front();
        words = words.subspan(1);
        if (option == "--help") {
            options.help = true;
            continue;
        }
        if (option != "--idle" && option != "--limit")
            throw BadOptions("unknown option '" + option + "'");
        if (words.empty())
            throw BadOptions(option + " takes seconds");
        (option == "--idle" ? options.idle : options.limit) = secondsFrom(option, words.front());
        words = words.subspan(1);
    }
    return options;
}

} // namespace velq::daemon
