#pragma once

#include "platform/linux/propertylist/Node.h"

#include <functional>
#include <string>
#include <system_error>

namespace velq::propertylist
{

/// What was read of the file at a path.
struct DictionaryRead {
    Node dictionary;       ///< null when there is none
    std::error_code error; ///< why not; std::errc::bad_message for a damaged file or another list

    bool isMissing() const { return error == std::errc::no_such_file_or_directory; }
    bool isDamaged() const { return error == std::errc::bad_message; }
};

/// A property list in a file, a dictionary at its top. Any thread and process; symbolic links at
/// the path lead to the file that is meant.
DictionaryRead readDictionary(const std::string &path);

/// Writes it whole, in the place of whatever was there.
std::error_code writeDictionary(const std::string &path, void *dictionary);

/// How a change ended. `error` is std::errc::illegal_byte_sequence when the new
/// dictionary cannot be a property list.
struct DictionaryEdited {
    std::error_code error;
    std::string damaged; ///< the name that the damaged file before got; empty when there was none
};

/// Reads the dictionary, lets `change` change it, and writes it, nobody else changing it meanwhile.
/// A missing file counts as empty, and so does a damaged one, which is put aside as
/// NAME.corrupt-TIME. One that cannot be read is left alone, and so is the file when `change` says
/// false.
DictionaryEdited editDictionary(const std::string &path, const std::function<bool(void *)> &change);

/// Removes the file, or puts it aside when it is damaged. One that cannot be read is left alone,
/// and a missing one is an error.
DictionaryEdited removeDictionary(const std::string &path);

} // namespace velq::propertylist
