#include "platform/linux/propertylist/Node.h"

#include "platform/linux/propertylist/BinaryCheck.h"
#include "platform/linux/propertylist/XmlCheck.h"

#include <plist/plist.h>

#include <clocale>
#include <cstdint>
#include <cstdlib>

namespace velq::propertylist
{

namespace
{

// The library knows none.
constexpr std::string_view byteOrderMark = "\xef\xbb\xbf";

struct FreeMemory {
    void operator()(void *memory) const noexcept { std::free(memory); }
};
using Text = std::unique_ptr<char, FreeMemory>;

// The library reads numbers in the locale of the program: as 0 where they are written "0,25".
class CLocale
{
public:
    CLocale()
        : m_before(uselocale(m_locale))
    {
    }
    CLocale(const CLocale &) = delete;
    CLocale &operator=(const CLocale &) = delete;
    ~CLocale()
    {
        uselocale(m_before);
        freelocale(m_locale);
    }

private:
    locale_t m_locale = newlocale(LC_ALL_MASK, "C", nullptr);
    locale_t m_before;
};

std::string writtenAsXml(void *node)
{
    const CLocale locale;
    char *written = nullptr;
    uint32_t length = 0;
    plist_to_xml(node, &written, &length);
    const Text owner(written);
    return written == nullptr ? std::string() : std::string(written, length);
}

} // namespace

void FreeNode::operator()(void *node) const noexcept
{
    plist_free(node);
}

Node parsed(std::string_view bytes)
{
    if (bytes.size() > largestList)
        return nullptr;
    if (bytes.starts_with(byteOrderMark))
        bytes.remove_prefix(byteOrderMark.size());
    const bool binary = bytes.starts_with(binaryMagic);
    if (!(binary ? isSoundBinary(bytes) : isSoundXml(bytes)))
        return nullptr;
    const CLocale locale;
    plist_t root = nullptr;
    // plist_from_memory would tell them apart, but takes other arguments in each libplist.
    const auto parse = binary ? plist_from_bin : plist_from_xml;
    parse(bytes.data(), static_cast<uint32_t>(bytes.size()), &root);
    return Node(root);
}

std::optional<std::string> xmlOf(void *node)
{
    std::string xml = writtenAsXml(node);
    if (xml.size() > largestList || !isSoundXml(xml))
        return std::nullopt;
    return xml;
}

std::vector<Entry> entriesOf(void *dictionary)
{
    std::vector<Entry> entries;
    void *iterator = nullptr;
    plist_dict_new_iter(dictionary, &iterator);
    const std::unique_ptr<void, FreeMemory> owner(iterator);
    while (true) {
        char *key = nullptr;
        plist_t value = nullptr;
        plist_dict_next_item(dictionary, iterator, &key, &value);
        const Text ownedKey(key);
        if (value == nullptr)
            return entries;
        entries.push_back({key, value});
    }
}

// The XML form is the same in every libplist; its calls for dates and negative numbers are not.
std::string scalarText(void *node)
{
    const std::string xml = writtenAsXml(node);
    const size_t close = xml.find("</");
    const size_t open = xml.rfind('>', close);
    if (close == std::string::npos || open == std::string::npos)
        return {};
    return xml.substr(open + 1, close - open - 1);
}

Node scalarNode(std::string_view element, std::string_view text)
{
    std::string xml = "<plist version=\"1.0\"><";
    xml.append(element).append(">").append(text).append("</").append(element).append("></plist>");
    return parsed(xml);
}

} // namespace velq::propertylist
