#include "cli/documents/ManualPage.h"

#include "cli/Help.h"
#include "cli/Table.h"
#include "manual/Page.h"

namespace velq::cli
{

namespace
{

std::string meaning(const Command &command)
{
    std::string text = command.description;
    for (const Option &each : command.options)
        text.append("\n").append(each.name).append(": ").append(each.meaning).append(".");
    if (const Operand *operand = command.operand) {
        text.append("\n").append(operand->name).append(": ").append(operand->meaning);
        if (!isListed(*operand))
            text += ": " + operand->candidates().join(QStringLiteral(", ")).toStdString();
        text += ".";
    }
    if (command.found != nullptr)
        text.append("\nExit status 1: ").append(command.found).append(".");
    return text;
}

// A tool's page has not the tool's own name: that is another's, of the system's program.
std::string pagesOf(const std::vector<std::string> &tools)
{
    std::string pages;
    for (const std::string &tool : tools)
        pages += (pages.empty() ? "velq-" : ", velq-") + tool + "(1)";
    return pages;
}

} // namespace

std::string manualPage(const std::vector<std::string> &tools)
{
    manual::Page page("velq", "look after the network connection");
    page.section("SYNOPSIS");
    page.verbatim(usage(nullptr).remove(QStringLiteral("usage: ")).toStdString());
    page.section("COMMANDS");
    for (const Command &each : commands)
        page.item(synopsis(each).toStdString(), meaning(each));
    page.section("OPTIONS");
    page.item("--json", "Answer for programs: one JSON value. What is not known is null.");
    page.item("--verbose",
              "Show what the system's tools complain of, too, on standard error. Without it that "
              "is left out: what their failures mean is in the answer.");
    page.item("-h, --help", "Show how the program, or the command, is called.");
    page.item("--version", "Show the version.");
    page.section("EXIT STATUS");
    page.verbatim(exitStatuses(nullptr).toStdString());
    if (!tools.empty()) {
        page.section("SEE ALSO");
        page.text(pagesOf(tools));
    }
    return page.source();
}

} // namespace velq::cli
