#pragma once

#include <QByteArrayView>
#include <QString>
#include <QVariantMap>

#include <optional>

namespace velq
{

/// Property lists, in XML or binary form (told apart by content).
///
/// Dictionaries become QVariantMap, arrays QVariantList, strings QString, data QByteArray, and
/// numbers and booleans their Qt namesakes. Any thread.
class PropertyList
{
public:
    /// The dictionary at the top of the file; nothing when the file is missing, unreadable,
    /// damaged, or holds something else at its top.
    static std::optional<QVariantMap> dictionaryFromFile(const QString &path);
    static std::optional<QVariantMap> dictionaryFromData(QByteArrayView data);
};

} // namespace velq
