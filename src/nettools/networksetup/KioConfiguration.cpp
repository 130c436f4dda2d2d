#include "nettools/networksetup/KioConfiguration.h"

#include <algorithm>
#include <ranges>

namespace velq::nettools
{

namespace
{

constexpr std::string_view group = "[Proxy Settings]";

std::string_view trimmed(std::string_view text)
{
    constexpr std::string_view blanks = " \t\r\n";
    const size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) + 1 - first);
}

// A key may have marks behind it, in brackets: "httpProxy[$e]".
std::string_view keyIn(std::string_view line)
{
    const size_t equals = line.find('=');
    if (equals == std::string_view::npos || trimmed(line).starts_with('#'))
        return {};
    return trimmed(line.substr(0, std::min(equals, line.find('['))));
}

} // namespace

KioConfiguration::KioConfiguration(std::string_view text)
{
    bool isInGroup = false;
    while (!text.empty()) {
        const size_t end = text.find('\n');
        const std::string_view line = text.substr(0, end == std::string_view::npos ? end : end + 1);
        text.remove_prefix(line.size());
        if (trimmed(line).starts_with('['))
            isInGroup = trimmed(line) == group;
        m_lines.push_back({std::string(line), isInGroup});
    }
}

// The last one counts.
const KioConfiguration::Line *KioConfiguration::lineOf(std::string_view key) const
{
    const auto found =
        std::ranges::find_if(m_lines.rbegin(), m_lines.rend(), [&](const Line &line) {
            return line.isInGroup && keyIn(line.text) == key;
        });
    return found != m_lines.rend() ? &*found : nullptr;
}

std::string KioConfiguration::value(std::string_view key) const
{
    const Line *line = lineOf(key);
    if (line == nullptr)
        return {};
    return std::string(trimmed(std::string_view(line->text).substr(line->text.find('=') + 1)));
}

void KioConfiguration::set(std::string_view key, std::string_view value)
{
    const std::string text = std::string(key).append("=").append(value).append("\n");
    if (const Line *line = lineOf(key); line != nullptr)
        m_lines[static_cast<size_t>(line - m_lines.data())].text = text;
    else
        insert(text);
}

void KioConfiguration::insert(const std::string &line)
{
    const auto holds = [](const Line &other) {
        return other.isInGroup && !trimmed(other.text).empty();
    };
    if (!m_lines.empty() && !m_lines.back().text.ends_with('\n'))
        m_lines.back().text += '\n';
    if (std::ranges::none_of(m_lines, holds)) {
        if (!m_lines.empty())
            m_lines.push_back({"\n"});
        m_lines.push_back({std::string(group) + "\n", true});
    }
    const auto last = std::ranges::find_if(m_lines.rbegin(), m_lines.rend(), holds);
    m_lines.insert(last.base(), {line, true});
}

std::string KioConfiguration::text() const
{
    std::string text;
    for (const Line &line : m_lines)
        text += line.text;
    return text;
}

} // namespace velq::nettools
