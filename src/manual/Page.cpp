#include "manual/Page.h"

#include <algorithm>
#include <cctype>

namespace velq::manual
{

namespace
{

constexpr std::string_view blanks = " \t";

std::string plain(std::string_view text)
{
    std::string result;
    for (const char each : text) {
        if (each == '\\')
            result += "\\e";
        else if (each == '-')
            result += "\\-";
        else
            result += each;
    }
    return result;
}

std::string capitals(std::string_view text)
{
    std::string result(text);
    std::ranges::transform(result, result.begin(), [](unsigned char each) {
        return static_cast<char>(std::toupper(each));
    });
    return result;
}

// Takes the first line off.
std::string_view nextLine(std::string_view &lines)
{
    const std::string_view line = lines.substr(0, lines.find('\n'));
    lines.remove_prefix(std::min(lines.size(), line.size() + 1));
    return line;
}

std::string_view trimmed(std::string_view line)
{
    line.remove_prefix(std::min(line.size(), line.find_first_not_of(blanks)));
    return line.substr(0, line.find_last_not_of(blanks) + 1);
}

} // namespace

Page::Page(std::string_view name, std::string_view summary)
    : m_source(".TH " + capitals(name) + " 1 \"\" \"Velq " VELQ_VERSION "\"\n")
{
    // What is typed must not be taken for longer by a hyphen.
    m_source += ".nh\n";
    section("NAME");
    m_source += std::string(name) + " \\- " + plain(summary) + "\n";
}

void Page::section(std::string_view title)
{
    m_source.append(".SH ").append(title).append("\n");
}

void Page::text(std::string_view lines)
{
    bool shownAsIs = false;
    while (!lines.empty()) {
        const std::string_view line = nextLine(lines);
        const bool indented = line.starts_with(' ');
        if (indented != shownAsIs)
            m_source += indented ? ".nf\n" : ".fi\n";
        shownAsIs = indented;
        appendLine(line);
    }
    if (shownAsIs)
        m_source += ".fi\n";
}

void Page::verbatim(std::string_view lines)
{
    m_source += ".nf\n";
    while (!lines.empty())
        appendLine(trimmed(nextLine(lines)));
    m_source += ".fi\n";
}

void Page::item(std::string_view term, std::string_view meaning)
{
    m_source += ".TP\n.B " + plain(term) + "\n";
    text(meaning);
}

void Page::appendLine(std::string_view line)
{
    // In front of a full stop or an apostrophe that begins a line.
    m_source += "\\&" + plain(line) + "\n";
}

} // namespace velq::manual
