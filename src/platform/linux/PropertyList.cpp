#include "platform/PropertyList.h"

#include "platform/linux/propertylist/DictionaryFile.h"
#include "platform/linux/propertylist/ListFile.h"
#include "platform/linux/propertylist/Node.h"

#include <QDateTime>
#include <QFile>

#include <plist/plist.h>

namespace velq
{

namespace
{

using propertylist::Node;

QVariant valueOf(plist_t node);

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

QVariant dateOf(plist_t node)
{
    const std::string text = propertylist::scalarText(node);
    return QDateTime::fromString(QString::fromStdString(text), Qt::ISODate);
}

QVariantList listOf(plist_t node)
{
    QVariantList list;
    for (uint32_t i = 0; i < plist_array_get_size(node); ++i)
        list.append(valueOf(plist_array_get_item(node, i)));
    return list;
}

QVariantMap mapOf(plist_t node)
{
    QVariantMap map;
    for (const auto &[key, value] : propertylist::entriesOf(node))
        map.insert(QString::fromStdString(key), valueOf(value));
    return map;
}

QVariant valueOf(plist_t node)
{
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
        return listOf(node);
    case PLIST_DICT:
        return mapOf(node);
    default:
        return {};
    }
}

Node nodeOf(const QVariant &value);

// The library ends a text at its first NUL.
Node textNode(const QString &text)
{
    const QByteArray bytes = text.toUtf8();
    return bytes.contains('\0') ? nullptr : Node(plist_new_string(bytes.constData()));
}

Node integerNode(const QVariant &value)
{
    return propertylist::scalarNode("integer", value.toString().toStdString());
}

Node dateNode(const QDateTime &date)
{
    const QString text = date.toUTC().toString(QStringLiteral("yyyy-MM-ddThh:mm:ssZ"));
    return propertylist::scalarNode("date", text.toStdString());
}

Node dataNode(const QByteArray &data)
{
    return Node(plist_new_data(data.constData(), static_cast<uint64_t>(data.size())));
}

Node arrayNode(const QVariantList &list)
{
    Node array(plist_new_array());
    for (const QVariant &value : list) {
        Node item = nodeOf(value);
        if (item == nullptr)
            return nullptr;
        plist_array_append_item(array.get(), item.release());
    }
    return array;
}

bool isAbsent(const QVariant &value)
{
    return value.isNull() || (value.typeId() == QMetaType::QString && value.toString().isNull());
}

// False when the value is none that a list can hold.
bool change(plist_t dictionary, const QString &key, const QVariant &value)
{
    const std::string name = key.toStdString();
    if (isAbsent(value)) {
        plist_dict_remove_item(dictionary, name.c_str());
        return true;
    }
    Node item = nodeOf(value);
    if (item == nullptr || key.contains(QChar(0)))
        return false;
    plist_dict_set_item(dictionary, name.c_str(), item.release());
    return true;
}

bool change(plist_t dictionary, const QVariantMap &values)
{
    for (auto each = values.begin(); each != values.end(); ++each) {
        if (!change(dictionary, each.key(), each.value()))
            return false;
    }
    return true;
}

Node dictionaryNode(const QVariantMap &map)
{
    Node dictionary(plist_new_dict());
    return change(dictionary.get(), map) ? std::move(dictionary) : nullptr;
}

Node nodeOf(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::QString:
        return textNode(value.toString());
    case QMetaType::Bool:
        return Node(plist_new_bool(value.toBool() ? 1 : 0));
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        return integerNode(value);
    case QMetaType::Float:
    case QMetaType::Double:
        return Node(plist_new_real(value.toDouble()));
    case QMetaType::QDateTime:
        return dateNode(value.toDateTime());
    case QMetaType::QByteArray:
        return dataNode(value.toByteArray());
    case QMetaType::QStringList:
    case QMetaType::QVariantList:
        return arrayNode(value.toList());
    case QMetaType::QVariantMap:
        return dictionaryNode(value.toMap());
    default:
        return nullptr;
    }
}

std::string nativePath(const QString &path)
{
    return QFile::encodeName(path).toStdString();
}

} // namespace

std::optional<QVariantMap> PropertyList::dictionaryFromFile(const QString &path)
{
    const propertylist::DictionaryRead read = propertylist::readDictionary(nativePath(path));
    if (read.dictionary == nullptr)
        return std::nullopt;
    return mapOf(read.dictionary.get());
}

std::optional<QVariantMap> PropertyList::dictionaryFromData(QByteArrayView data)
{
    const Node root = propertylist::parsed({data.data(), static_cast<size_t>(data.size())});
    if (root == nullptr || plist_get_node_type(root.get()) != PLIST_DICT)
        return std::nullopt;
    return mapOf(root.get());
}

bool PropertyList::canHold(const QVariantMap &dictionary)
{
    const Node node = dictionaryNode(dictionary);
    return node != nullptr && propertylist::xmlOf(node.get()).has_value();
}

bool PropertyList::writeDictionary(const QVariantMap &dictionary, const QString &path)
{
    const Node node = dictionaryNode(dictionary);
    return node != nullptr && !propertylist::writeDictionary(nativePath(path), node.get());
}

bool PropertyList::changeDictionary(const QVariantMap &changes, const QString &path)
{
    bool possible = true;
    const auto apply = [&](plist_t dictionary) {
        return possible = change(dictionary, changes);
    };
    const std::string file = nativePath(path);
    return !propertylist::makeFolderOf(file) && !propertylist::editDictionary(file, apply).error
        && possible;
}

} // namespace velq
