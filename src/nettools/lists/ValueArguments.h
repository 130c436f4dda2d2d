#pragma once

#include "nettools/lib/Tool.h"
#include "platform/linux/propertylist/Node.h"

#include <string>
#include <string_view>
#include <utility>

namespace velq::nettools
{

/// A value that arguments describe.
struct Value {
    propertylist::Node node; ///< null when the arguments describe none
    bool isAddition = false; ///< to the array or dictionary that is already there
    std::string complaint;   ///< what is wrong with the arguments; empty when nothing is

    static Value of(propertylist::Node node) { return {std::move(node), false, {}}; }
    static Value refused(std::string complaint) { return {nullptr, false, std::move(complaint)}; }
};

/// The value of `words`: a type's option ("-int", "-array", ...) and what it takes, or a plain
/// value.
Value valueOf(Arguments words);

/// The value of one word without a type: a property list in XML or in the old style when it begins
/// like one, else the text itself.
Value plainValue(std::string_view word);

/// Puts the value under the key. Returns a complaint, empty when it is done: an addition must find
/// a value of its kind, or none.
std::string put(void *dictionary, const std::string &key, Value value);

} // namespace velq::nettools
