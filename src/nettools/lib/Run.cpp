#include "nettools/lib/Run.h"

#include "nettools/lib/Help.h"
#include "nettools/lib/Output.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace velq::nettools
{

namespace
{

// A descriptor that the caller left closed would be given to the next socket, and output would go
// into that. A null device open for reading alone fails to be written to, as it should.
void occupyStandardDescriptors()
{
    int descriptor = STDIN_FILENO;
    while (descriptor <= STDERR_FILENO && descriptor >= 0)
        descriptor = open("/dev/null", O_RDONLY | O_CLOEXEC);
    if (descriptor > STDERR_FILENO)
        close(descriptor);
}

std::string versionText(const Tool &tool)
{
    return std::string(tool.name).append(" (Velq) " VELQ_VERSION "\n");
}

Outcome perform(const Tool &tool, Arguments arguments, Output &output)
{
    const std::string_view only = arguments.size() == 1 ? arguments[0] : std::string_view();
    if (only == "--help")
        output.text() = helpText(tool);
    else if (only == "--version")
        output.text() = versionText(tool);
    else
        return tool.run(arguments, output);
    return Outcome::done();
}

void complain(const Tool &tool, const Outcome &outcome)
{
    Output errors(STDERR_FILENO);
    if (!outcome.complaint.empty())
        errors.text().append(tool.name).append(": ").append(outcome.complaint).append("\n");
    if (outcome.status == Outcome::misuse && !outcome.complaint.empty())
        errors.text() += usageLines(tool);
    // Nobody is left to be told when even this fails.
    (void)errors.flush();
}

} // namespace

int runTool(const Tool &tool, Arguments arguments)
{
    occupyStandardDescriptors();
    (void)std::signal(SIGPIPE, SIG_IGN);

    Output output(STDOUT_FILENO);
    Outcome outcome = perform(tool, arguments, output);
    if (!output.flush() && outcome.status == 0)
        outcome = Output::failure(errno);
    complain(tool, outcome);
    return outcome.status;
}

} // namespace velq::nettools
