#include "nettools/Defaults.h"

#include "nettools/lib/Output.h"
#include "nettools/lists/Domain.h"
#include "nettools/lists/ListText.h"
#include "nettools/lists/ValueArguments.h"
#include "platform/linux/propertylist/DictionaryFile.h"
#include "platform/linux/propertylist/ListFile.h"

#include <plist/plist.h>

namespace velq::nettools
{

namespace
{

using propertylist::DictionaryEdited;
using propertylist::DictionaryRead;
using propertylist::Node;

constexpr std::string_view unchanged = "\nDefaults have not been changed.";

std::string pairDoesNotExist(const Domain &domain, std::string_view key)
{
    return std::string("The domain/default pair of (")
        .append(domain.name)
        .append(", ")
        .append(key)
        .append(") does not exist");
}

std::string domainNotFound(const Domain &domain)
{
    return std::string("Domain (").append(domain.name).append(") not found.").append(unchanged);
}

Outcome unreadable(const Domain &domain, const DictionaryRead &read)
{
    if (read.isDamaged())
        return Outcome::failed(domain.path + " is no dictionary of settings, or is damaged");
    return Outcome::failed("cannot read " + domain.path + ": " + read.error.message());
}

// A change is done even though a damaged file had to give way, but nobody should have to find out.
Outcome outcomeOf(const Domain &domain, const DictionaryEdited &edited)
{
    if (edited.error == std::errc::illegal_byte_sequence)
        return Outcome::failed("a property list cannot hold that" + std::string(unchanged));
    if (edited.error)
        return Outcome::failed("cannot change " + domain.path + ": " + edited.error.message());
    if (!edited.damaged.empty())
        return {0, domain.path + " was damaged; it is kept as " + edited.damaged};
    return Outcome::done();
}

Outcome readAll(Output &output)
{
    const Node all(plist_new_dict());
    for (const Domain &domain : everyDomain()) {
        if (DictionaryRead read = propertylist::readDictionary(domain.path); !read.error)
            plist_dict_set_item(all.get(), domain.name.c_str(), read.dictionary.release());
    }
    output.text() = listText(all.get()) + "\n";
    return Outcome::done();
}

Outcome readDomain(const Domain &domain, Output &output)
{
    const DictionaryRead read = propertylist::readDictionary(domain.path);
    if (read.isMissing())
        return Outcome::failed("Domain " + domain.name + " does not exist");
    if (read.error)
        return unreadable(domain, read);
    output.text() = listText(read.dictionary.get()) + "\n";
    return Outcome::done();
}

Outcome readKey(const Domain &domain, std::string_view key, Output &output)
{
    const DictionaryRead read = propertylist::readDictionary(domain.path);
    if (read.error && !read.isMissing())
        return unreadable(domain, read);
    plist_t value = read.dictionary
        ? plist_dict_get_item(read.dictionary.get(), std::string(key).c_str())
        : nullptr;
    if (value == nullptr)
        return Outcome::failed(pairDoesNotExist(domain, key));
    output.text() = listText(value) + "\n";
    return Outcome::done();
}

Outcome change(const Domain &domain, const std::function<bool(plist_t)> &apply)
{
    // A folder that a path names is the caller's to make.
    if (domain.isOfUser) {
        if (const std::error_code error = propertylist::makeFolderOf(domain.path))
            return outcomeOf(domain, {error, {}});
    }
    return outcomeOf(domain, propertylist::editDictionary(domain.path, apply));
}

Outcome replaceAll(const Domain &domain, std::string_view list)
{
    Value value = plainValue(list);
    if (!value.complaint.empty())
        return Outcome::failed(value.complaint + std::string(unchanged));
    if (plist_get_node_type(value.node.get()) != PLIST_DICT)
        return Outcome::failed("Rep argument is not a dictionary" + std::string(unchanged));
    return change(domain, [&](plist_t dictionary) {
        for (const auto &entry : propertylist::entriesOf(dictionary))
            plist_dict_remove_item(dictionary, entry.key.c_str());
        plist_dict_merge(&dictionary, value.node.get());
        return true;
    });
}

Outcome write(const Domain &domain, Arguments words)
{
    if (words.size() == 1)
        return replaceAll(domain, words[0]);
    Value value = valueOf(words.subspan(1));
    if (!value.complaint.empty())
        return Outcome::failed(value.complaint + std::string(unchanged));
    const std::string key(words[0]);
    std::string complaint;
    const Outcome outcome = change(domain, [&](plist_t dictionary) {
        complaint = put(dictionary, key, std::move(value));
        return complaint.empty();
    });
    return complaint.empty() ? outcome : Outcome::failed(complaint + std::string(unchanged));
}

Outcome deleteDomain(const Domain &domain)
{
    const DictionaryEdited edited = propertylist::removeDictionary(domain.path);
    if (edited.error == std::errc::no_such_file_or_directory)
        return Outcome::failed(domainNotFound(domain));
    return outcomeOf(domain, edited);
}

Outcome deleteKey(const Domain &domain, const std::string &key)
{
    const DictionaryRead read = propertylist::readDictionary(domain.path);
    if (read.isMissing())
        return Outcome::failed(domainNotFound(domain));
    if (read.error)
        return unreadable(domain, read);
    bool found = false;
    const Outcome outcome = change(domain, [&](plist_t dictionary) {
        found = plist_dict_get_item(dictionary, key.c_str()) != nullptr;
        plist_dict_remove_item(dictionary, key.c_str());
        return found;
    });
    return found || outcome.status != 0 ? outcome : Outcome::failed(domainNotFound(domain));
}

} // namespace

Outcome defaults(Arguments arguments, Output &output)
{
    if (arguments.empty())
        return Outcome::misused("what is to be done?");
    const std::string_view verb = arguments[0];
    const Arguments words = arguments.subspan(1);
    if (verb != "read" && verb != "write" && verb != "delete")
        return Outcome::misused("unknown verb '" + std::string(verb) + "'");
    if (verb == "read" && words.empty())
        return readAll(output);
    if (words.empty() || (verb == "write" && words.size() < 2))
        return Outcome::misused("too few arguments");
    if (verb != "write" && words.size() > 2)
        return Outcome::misused("unexpected argument '" + std::string(words[2]) + "'");

    const std::optional<Domain> domain = domainNamed(words[0]);
    if (!domain)
        return Outcome::misused("'" + std::string(words[0]) + "' is no domain");
    if (verb == "write")
        return write(*domain, words.subspan(1));
    if (verb == "read")
        return words.size() == 1 ? readDomain(*domain, output) : readKey(*domain, words[1], output);
    return words.size() == 1 ? deleteDomain(*domain) : deleteKey(*domain, std::string(words[1]));
}

} // namespace velq::nettools
