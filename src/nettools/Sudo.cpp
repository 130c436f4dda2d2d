#include "nettools/Sudo.h"

#include "nettools/lib/SystemProgram.h"

#include <cerrno>
#include <cstring>
#include <unistd.h>
#include <vector>

namespace velq::nettools
{

namespace
{

// Statuses of the shell's for a command that cannot be run.
constexpr int notExecutable = 126;
constexpr int notFound = 127;

Outcome run(const std::string &program, Arguments arguments)
{
    std::vector<std::string> texts(arguments.begin(), arguments.end());
    std::vector<char *> pointers;
    pointers.reserve(texts.size() + 1);
    for (std::string &text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);

    (void)execvp(program.c_str(), pointers.data());
    const int error = errno;
    return {error == ENOENT ? notFound : notExecutable, program + ": " + std::strerror(error)};
}

} // namespace

Outcome sudo(Arguments arguments, Output &)
{
    if (arguments.empty())
        return Outcome::misused("run which command?");
    if (geteuid() == 0) {
        if (arguments[0].starts_with('-'))
            return Outcome::misused(std::string("unknown option ").append(arguments[0]));
        return run(std::string(arguments[0]), arguments);
    }
    const std::string system = systemProgram("sudo");
    if (system.empty())
        return Outcome::failed("only root can do that, and this system has no sudo");
    std::vector<std::string_view> words{"sudo"};
    words.insert(words.end(), arguments.begin(), arguments.end());
    return run(system, words);
}

} // namespace velq::nettools
