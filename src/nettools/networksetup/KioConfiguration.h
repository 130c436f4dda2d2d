#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace velq::nettools
{

/// The text of KDE's kioslaverc, of which only the group "Proxy Settings" is looked at. What is
/// not set stays as it was to the byte.
class KioConfiguration
{
public:
    explicit KioConfiguration(std::string_view text);

    /// Empty when there is none.
    std::string value(std::string_view key) const;
    /// In the place of the value before; at the end of the group when there was none, and in a
    /// group at the end of the file when that was missing, too.
    void set(std::string_view key, std::string_view value);

    std::string text() const;

private:
    struct Line {
        std::string text; ///< with its end
        bool isInGroup = false;
    };

    const Line *lineOf(std::string_view key) const;
    void insert(const std::string &line);

    std::vector<Line> m_lines;
};

} // namespace velq::nettools
