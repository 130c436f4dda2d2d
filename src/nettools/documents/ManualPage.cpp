#include "nettools/documents/ManualPage.h"

#include "manual/Page.h"
#include "nettools/lib/Help.h"

#include <algorithm>
#include <cctype>

namespace velq::nettools
{

namespace
{

// The first sentence in one line, as the end of another.
std::string purpose(const Tool &tool)
{
    std::string text(tool.summary);
    std::ranges::replace(text, '\n', ' ');
    text.resize(std::min({text.size() - 1, text.find(". "), text.find(": ")}));
    text[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(text[0])));
    return text;
}

void appendForms(manual::Page &page, const Tool &tool)
{
    if (!tool.forms.empty())
        page.section("FORMS");
    for (const Form &form : tool.forms)
        page.item(callOf(form), form.summary);
}

} // namespace

std::string manualPage(const Tool &tool)
{
    const std::string name(tool.name);
    manual::Page page(manualPageName(tool), purpose(tool));
    page.section("SYNOPSIS");
    for (const std::string &call : callsOf(tool))
        page.verbatim(call + "\n");
    page.verbatim(name + " --help\n" + name + " --version\n");
    page.section("DESCRIPTION");
    page.text(tool.summary);
    appendForms(page, tool);
    page.section("EXIT STATUS");
    page.item("0", "What was asked for is done.");
    page.item("1", "It could not be done; standard error tells why.");
    page.item("2", "The tool was called wrongly.");
    page.section("SEE ALSO");
    page.text("velq(1)");
    return page.source();
}

} // namespace velq::nettools
