#include "nettools/Ping.h"

#include "nettools/lib/Output.h"
#include "nettools/lib/PingText.h"
#include "nettools/lib/SystemProgram.h"
#include "shell/process/ChildProcess.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <vector>

namespace velq::nettools
{

namespace
{

struct Call {
    std::vector<std::string> options; ///< for the system's ping
    std::string host;
    std::string complaint; ///< what is wrong with the call; empty when nothing is
};

bool isNumber(std::string_view text)
{
    return !text.empty() && text.size() <= 6
        && std::ranges::all_of(text, [](char each) { return each >= '0' && each <= '9'; });
}

// Reads "-c2" and "-c 2" alike; moves on to what it has used up.
void readNumber(Arguments arguments, size_t &at, Call &call)
{
    const std::string_view word = arguments[at];
    std::string_view number = word.substr(2);
    if (number.empty() && at + 1 < arguments.size())
        number = arguments[++at];
    if (!isNumber(number))
        call.complaint = std::string(word.substr(0, 2)).append(" needs a number");
    call.options.emplace_back(word.substr(0, 2));
    call.options.emplace_back(number);
}

Call readCall(Arguments arguments)
{
    Call call;
    for (size_t at = 0; at < arguments.size() && call.complaint.empty(); ++at) {
        const std::string_view word = arguments[at];
        if (word.starts_with("-c") || word.starts_with("-s"))
            readNumber(arguments, at, call);
        else if (word == "-D")
            call.options.insert(call.options.end(), {"-M", "do"});
        else if (word.starts_with('-'))
            call.complaint = std::string("unknown option ").append(word);
        else if (call.host.empty())
            call.host = word;
        else
            call.complaint = std::string("unexpected argument ").append(word);
    }
    if (call.complaint.empty() && call.host.empty())
        call.complaint = "ask which host?";
    return call;
}

// Whole lines, each as soon as it has come. False when nobody takes them.
bool pass(std::string &pending, Output &output)
{
    size_t end = 0;
    while ((end = pending.find('\n')) != std::string::npos) {
        output.text().append(pingLine(std::string_view(pending).substr(0, end))) += '\n';
        pending.erase(0, end + 1);
    }
    return output.flush();
}

Outcome run(const std::string &program, const std::vector<std::string> &arguments, Output &output)
{
    process::ChildProcess child(program, arguments);
    std::string pending;
    for (std::string piece = child.readAvailable(); !piece.empty(); piece = child.readAvailable()) {
        pending += piece;
        if (!pass(pending, output))
            return Output::failure(errno);
    }
    child.waitUntilExit();
    return {child.exitStatus(), {}};
}

} // namespace

Outcome ping(Arguments arguments, Output &output)
{
    Call call = readCall(arguments);
    if (!call.complaint.empty())
        return Outcome::misused(call.complaint);
    const std::string program = systemProgram("ping");
    if (program.empty())
        return Outcome::failed("this system has no ping (Debian: iputils-ping)");

    // The words that are translated are the English ones.
    (void)setenv("LC_ALL", "C", 1);
    // After the last echo the system's would wait ten seconds for a host that says nothing.
    std::vector<std::string> words{"-n", "-O", "-W", "2"};
    words.insert(words.end(), call.options.begin(), call.options.end());
    words.insert(words.end(), {"--", call.host});
    try {
        return run(program, words, output);
    } catch (const process::LaunchError &error) {
        return Outcome::failed(error.what());
    }
}

} // namespace velq::nettools
