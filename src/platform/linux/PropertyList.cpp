#include "platform/PropertyList.h"

#include <QDateTime>
#include <QFile>
#include <QTimeZone>

#include <plist/plist.h>

#include <cstdlib>
#include <memory>

namespace velq
{

namespace
{

struct FreeNode {
    void operator()(plist_t node) const noexcept { plist_free(node); }
};
using Node = std::unique_ptr<void, FreeNode>;

struct FreeText {
    void operator()(char *text) const noexcept { std::free(text); }
};

// A damaged list may nest without end; real ones are a few levels deep.
constexpr int deepest = 64;

QVariant valueOf(plist_t node, int depth);

QString textOf(plist_t node)
{
    uint64_t length = 0;
    const char *text = plist_get_string_ptr(node, &length);
    return QString::fromUtf8(text, static_cast<qsizetype>(length));
}

QByteArray dataOf(plist_t node)
{
    uint64_t length = 0;
    const char *data = plist_get_data_ptr(node, &length);
    return {data, static_cast<qsizetype>(length)};
}

QVariant integerOf(plist_t node)
{
    uint64_t value = 0;
    plist_get_uint_val(node, &value);
    return QVariant::fromValue(static_cast<qlonglong>(value));
}

QVariant realOf(plist_t node)
{
    double value = 0;
    plist_get_real_val(node, &value);
    return value;
}

QVariant booleanOf(plist_t node)
{
    uint8_t value = 0;
    plist_get_bool_val(node, &value);
    return value != 0;
}

// Dates count from the first second of 2001, UTC.
QVariant dateOf(plist_t node)
{
    int32_t seconds = 0;
    int32_t microseconds = 0;
    plist_get_date_val(node, &seconds, &microseconds);
    const QDateTime epoch(QDate(2001, 1, 1), QTime(0, 0), QTimeZone::utc());
    return epoch.addSecs(seconds).addMSecs(microseconds / 1000);
}

QVariantList listOf(plist_t node, int depth)
{
    QVariantList list;
    for (uint32_t i = 0; i < plist_array_get_size(node); ++i)
        list.append(valueOf(plist_array_get_item(node, i), depth));
    return list;
}

QVariantMap mapOf(plist_t node, int depth)
{
    QVariantMap map;
    void *iterator = nullptr;
    plist_dict_new_iter(node, &iterator);
    const std::unique_ptr<void, decltype(&std::free)> owner(iterator, &std::free);
    while (true) {
        char *key = nullptr;
        plist_t item = nullptr;
        plist_dict_next_item(node, iterator, &key, &item);
        const std::unique_ptr<char, FreeText> ownedKey(key);
        if (item == nullptr)
            return map;
        map.insert(QString::fromUtf8(key), valueOf(item, depth));
    }
}

QVariant valueOf(plist_t node, int depth)
{
    if (depth > deepest)
        return {};
    switch (plist_get_node_type(node)) {
    case PLIST_STRING:
        return textOf(node);
    case PLIST_BOOLEAN:
        return booleanOf(node);
    case PLIST_UINT:
        return integerOf(node);
    case PLIST_REAL:
        return realOf(node);
    case PLIST_DATE:
        return dateOf(node);
    case PLIST_DATA:
        return dataOf(node);
    case PLIST_ARRAY:
        return listOf(node, depth + 1);
    case PLIST_DICT:
        return mapOf(node, depth + 1);
    default:
        return {};
    }
}

} // namespace

std::optional<QVariantMap> PropertyList::dictionaryFromFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return dictionaryFromData(file.readAll());
}

std::optional<QVariantMap> PropertyList::dictionaryFromData(QByteArrayView data)
{
    plist_t parsed = nullptr;
    const auto length = static_cast<uint32_t>(data.size());
    // plist_from_memory would tell them apart, but takes other arguments in each libplist.
    const auto parse = plist_is_binary(data.data(), length) != 0 ? plist_from_bin : plist_from_xml;
    parse(data.data(), length, &parsed);
    const Node root(parsed);
    if (root == nullptr || plist_get_node_type(root.get()) != PLIST_DICT)
        return std::nullopt;
    return mapOf(root.get(), 0);
}

} // namespace velq
