#include "nettools/lib/Help.h"

#include <sstream>
#include <string_view>

namespace velq::nettools
{

namespace
{

constexpr std::string_view usage = "usage: ";
constexpr std::string_view belowUsage = "       ";

} // namespace

std::vector<std::string> callsOf(const Tool &tool)
{
    std::vector<std::string> calls;
    std::istringstream usages{std::string(tool.usage)};
    for (std::string one; std::getline(usages, one);)
        calls.push_back(std::string(tool.name) + " " + one);
    return calls;
}

std::string usageLines(const Tool &tool)
{
    std::string text;
    for (const std::string &call : callsOf(tool))
        text.append(text.empty() ? usage : belowUsage).append(call).append("\n");
    return text;
}

std::string callOf(const Form &form)
{
    return std::string(form.name).append(form.arguments.empty() ? "" : " ").append(form.arguments);
}

std::string helpText(const Tool &tool)
{
    std::string text = usageLines(tool);
    text.append(belowUsage).append(tool.name).append(" --help | --version\n\n");
    text.append(tool.summary).append("\n");
    for (const Form &form : tool.forms)
        text.append("\n  ").append(callOf(form)).append("\n      ").append(form.summary);
    if (!tool.forms.empty())
        text += '\n';
    return text.append("\nThe manual page: man ").append(manualPageName(tool)).append("\n");
}

std::string manualPageName(const Tool &tool)
{
    return std::string("velq-").append(tool.name);
}

} // namespace velq::nettools
