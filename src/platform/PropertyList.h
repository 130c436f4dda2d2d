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
/// numbers and booleans their Qt namesakes. What is written is XML. Any thread.
class PropertyList
{
public:
    /// The dictionary at the top of the file; nothing when the file is missing, unreadable,
    /// damaged, beyond any sensible size (4 MiB, 64 levels), or holds something else at its top.
    static std::optional<QVariantMap> dictionaryFromFile(const QString &path);
    static std::optional<QVariantMap> dictionaryFromData(QByteArrayView data);

    /// Whether a list can hold it: texts without control characters, whole and real numbers,
    /// booleans, dates, data, and lists and maps of these.
    static bool canHold(const QVariantMap &dictionary);

    /// Writes the dictionary to `path`, in the place of any file there: at every moment, whatever
    /// fails, that file is wholly the old or wholly the new one. Keys whose value is null are left
    /// out. False when nothing was written: the folder is missing or cannot be written, the disk is
    /// full, or a value is none that a list can hold.
    static bool writeDictionary(const QVariantMap &dictionary, const QString &path);

    /// Sets the keys of `changes` in the dictionary of the file, removes those whose value is null,
    /// and keeps all others, also those that other processes change at that moment. A missing file
    /// is made, its folder too; a damaged one is put aside as NAME.corrupt-TIME. False when the
    /// file is as it was: it cannot be read or written, or a value is none that a list can hold.
    static bool changeDictionary(const QVariantMap &changes, const QString &path);
};

} // namespace velq
