#pragma once

#include <string>
#include <string_view>

namespace velq::manual
{

/// The text of a manual page while it is written, for man(1). Texts are given as they shall be
/// read: what the formatter would take for an order is none.
class Page
{
public:
    /// `name` is the page's, `summary` the end of a sentence, without a full stop.
    Page(std::string_view name, std::string_view summary);

    void section(std::string_view title);
    /// Sentences, in lines of any length. Lines that begin with a blank are shown as they are.
    void text(std::string_view lines);
    /// Whole lines, shown as they are but for the blanks around each.
    void verbatim(std::string_view lines);
    /// What `term` means.
    void item(std::string_view term, std::string_view meaning);

    const std::string &source() const { return m_source; }

private:
    void appendLine(std::string_view line);

    std::string m_source;
};

} // namespace velq::manual
