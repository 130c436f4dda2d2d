#include "platform/linux/propertylist/XmlCheck.h"

#include "platform/linux/propertylist/Node.h"
#include "platform/linux/propertylist/XmlText.h"

#include <algorithm>
#include <array>
#include <vector>

namespace velq::propertylist
{

namespace
{

constexpr std::string_view space = " \t\r\n";

enum class Content { one, pairs, values, text, scalar, nothing };

struct Element {
    std::string_view name;
    Content content;
};

constexpr std::array elements{
    Element{"plist", Content::one},     Element{"dict", Content::pairs},
    Element{"array", Content::values},  Element{"key", Content::text},
    Element{"string", Content::text},   Element{"integer", Content::scalar},
    Element{"real", Content::scalar},   Element{"date", Content::scalar},
    Element{"data", Content::scalar},   Element{"true", Content::nothing},
    Element{"false", Content::nothing},
};

const Element *elementNamed(std::string_view name)
{
    const auto *const found = std::ranges::find(elements, name, &Element::name);
    return found == elements.end() ? nullptr : &*found;
}

class XmlCheck
{
public:
    explicit XmlCheck(std::string_view bytes)
        : m_rest(bytes)
    {
    }

    bool run();

private:
    struct Open {
        const Element *element;
        size_t children;
        const char *begin; // of its content
    };

    bool takeMarkup();
    bool takeCharacters();
    bool takeDocumentType();
    bool takeOpening();
    bool takeClosing();
    bool mayOpen(const Element &element) const;
    bool close(const char *contentEnd);

    bool isIn(Content content) const
    {
        return !m_open.empty() && m_open.back().element->content == content;
    }
    bool isBetween() const { return !isIn(Content::text) && !isIn(Content::scalar); }
    bool take(std::string_view mark);
    bool takeThrough(std::string_view mark);
    std::string_view takeName();

    std::string_view m_rest;
    std::vector<Open> m_open;
    bool m_done = false;
};

bool XmlCheck::take(std::string_view mark)
{
    if (!m_rest.starts_with(mark))
        return false;
    m_rest.remove_prefix(mark.size());
    return true;
}

bool XmlCheck::takeThrough(std::string_view mark)
{
    const size_t found = m_rest.find(mark);
    if (found == std::string_view::npos)
        return false;
    m_rest.remove_prefix(found + mark.size());
    return true;
}

std::string_view XmlCheck::takeName()
{
    const std::string_view name = m_rest.substr(0, m_rest.find_first_of(" \t\r\n/>"));
    m_rest.remove_prefix(name.size());
    return name;
}

bool XmlCheck::run()
{
    while (!m_rest.empty()) {
        if (!(m_rest.front() == '<' ? takeMarkup() : takeCharacters()))
            return false;
    }
    return m_done;
}

bool XmlCheck::takeCharacters()
{
    const std::string_view text = m_rest.substr(0, m_rest.find('<'));
    m_rest.remove_prefix(text.size());
    if (isIn(Content::text))
        return hasOnlyKnownReferences(text);
    return isIn(Content::scalar) || text.find_first_not_of(space) == std::string_view::npos;
}

bool XmlCheck::takeMarkup()
{
    if (take("<!--"))
        return isBetween() && takeThrough("-->");
    if (take("<?"))
        return m_open.empty() && takeThrough("?>");
    if (take("<![CDATA["))
        return isIn(Content::text) && takeThrough("]]>");
    if (take("<!DOCTYPE"))
        return takeDocumentType();
    if (take("</"))
        return takeClosing();
    return take("<") && takeOpening();
}

// One that declares anything of its own has a "[".
bool XmlCheck::takeDocumentType()
{
    const size_t end = m_rest.find_first_of("[<>");
    if (!m_open.empty() || m_done || end == std::string_view::npos || m_rest[end] != '>')
        return false;
    m_rest.remove_prefix(end + 1);
    return true;
}

bool XmlCheck::mayOpen(const Element &element) const
{
    const bool isKey = element.name == "key";
    if (m_open.empty())
        return element.content == Content::one && !m_done;
    const size_t children = m_open.back().children;
    switch (m_open.back().element->content) {
    case Content::one:
        return children == 0 && !isKey && element.content != Content::one;
    case Content::pairs:
        return isKey == (children % 2 == 0) && element.content != Content::one;
    case Content::values:
        return !isKey && element.content != Content::one;
    default:
        return false;
    }
}

bool XmlCheck::takeOpening()
{
    const Element *element = elementNamed(takeName());
    if (element == nullptr || !mayOpen(*element))
        return false;
    // Its version is the only attribute that property lists have.
    if (element->content == Content::one)
        m_rest.remove_prefix(std::min(m_rest.find_first_of("/<>"), m_rest.size()));
    m_rest.remove_prefix(std::min(m_rest.find_first_not_of(space), m_rest.size()));
    const bool isEmpty = take("/");
    const bool nests = element->content == Content::pairs || element->content == Content::values;
    if (!take(">") || (nests && m_open.size() > deepestNesting))
        return false;
    if (!m_open.empty())
        ++m_open.back().children;
    m_open.push_back({element, 0, m_rest.data()});
    return !isEmpty || close(m_rest.data());
}

bool XmlCheck::takeClosing()
{
    const char *contentEnd = m_rest.data() - 2;
    const std::string_view name = takeName();
    m_rest.remove_prefix(std::min(m_rest.find_first_not_of(space), m_rest.size()));
    return take(">") && !m_open.empty() && m_open.back().element->name == name && close(contentEnd);
}

bool XmlCheck::close(const char *contentEnd)
{
    const Open closed = m_open.back();
    m_open.pop_back();
    m_done = m_open.empty();
    switch (closed.element->content) {
    case Content::one:
        return closed.children == 1;
    case Content::pairs:
        return closed.children % 2 == 0;
    case Content::scalar:
        return isScalarText(closed.element->name, {closed.begin, contentEnd});
    default:
        return true;
    }
}

} // namespace

bool isSoundXml(std::string_view bytes)
{
    return isXmlText(bytes) && XmlCheck(bytes).run();
}

} // namespace velq::propertylist
