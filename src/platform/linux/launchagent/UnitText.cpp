#include "platform/linux/launchagent/UnitText.h"

namespace velq::launchagent
{

namespace
{

// What stands for one character in a text where some characters mean something.
std::string escaped(std::string_view text, std::string_view special, std::string_view before)
{
    std::string result;
    for (const char c : text) {
        if (special.find(c) != std::string_view::npos)
            result += before;
        result += c;
    }
    return result;
}

// systemd.syntax(7), systemd.unit(5): "%" starts a specifier everywhere.
std::string withoutSpecifiers(std::string_view text)
{
    return escaped(text, "%", "%");
}

std::string unitWord(std::string_view text)
{
    return '"' + escaped(withoutSpecifiers(text), "\"\\", "\\") + '"';
}

// A value of the Desktop Entry Specification, in which a backslash is written as two.
std::string entryValue(std::string_view text)
{
    return escaped(text, "\\", "\\");
}

std::string entryWord(std::string_view text)
{
    return entryValue('"' + escaped(escaped(text, "\"`$\\", "\\"), "%", "%") + '"');
}

std::string line(std::string_view key, std::string_view value)
{
    return std::string(key).append("=").append(value).append("\n");
}

// The colon: no "$" is a variable's. And systemd takes no program whose name holds a quote or a
// backslash.
std::string startCommand(const std::string &program)
{
    const bool refused = program.find_first_of("\"'\\") != std::string::npos;
    return (refused ? R"(:/bin/sh -c "exec \"$0\"" )" : ":") + unitWord(program);
}

// Neither an agent nor a program that was deleted is to be tried for ever.
std::string conditions(const Agent &agent)
{
    return line("ConditionPathExists", withoutSpecifiers(agent.propertyList))
        + line("ConditionFileIsExecutable", withoutSpecifiers(agent.program))
        + line("StartLimitIntervalSec", "0");
}

std::string environmentLines(const std::vector<std::string> &environment)
{
    std::string lines;
    for (const std::string &assignment : environment)
        lines += line("Environment", unitWord(assignment));
    return lines;
}

} // namespace

std::string unitText(const Agent &agent, const Domain &domain,
                     const std::vector<std::string> &environment)
{
    std::string text = "# Written by launchctl, anew whenever the agent is loaded.\n[Unit]\n"
        + line("Description", "Launch agent " + agent.label) + conditions(agent);
    if (!domain.isSystem)
        text += line("PartOf", domain.target) + line("After", domain.target);
    text += "\n[Service]\n" + line("Type", "exec") + line("ExecStart", startCommand(agent.program))
        + environmentLines(environment) + line("Restart", agent.keepAlive ? "always" : "no")
        + line("RestartSec", "1s") + line("TimeoutStopSec", "10s");
    text += "\n[Install]\n" + line("WantedBy", domain.target);
    text.append("\n").append(unitMark).append("\n").append(line("Path", agent.propertyList));
    return agent.version ? text + line("Version", std::to_string(*agent.version)) : text;
}

std::string autostartText(const Agent &agent, const std::string &tool)
{
    return "[Desktop Entry]\n" + line("Type", "Application") + line("Name", agent.label)
        + line("NoDisplay", "true") + line("TryExec", entryValue(tool))
        + line("Exec", entryWord(tool) + " load " + entryWord(agent.propertyList))
        + line(entryMark, entryValue(agent.propertyList));
}

} // namespace velq::launchagent
