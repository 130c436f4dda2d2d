#include "nettools/networkmanager/Settings.h"

#include <algorithm>
#include <vector>

namespace velq::nettools
{

namespace
{

constexpr const char *writing = "writing settings";
constexpr const char *group = "sa{sv}";
constexpr const char *entry = "sv";

class Container
{
public:
    Container(sd_bus_message *message, char type, const char *contents)
        : m_message(message)
    {
        check(sd_bus_message_open_container(message, type, contents), writing);
    }
    Container(const Container &) = delete;
    Container &operator=(const Container &) = delete;
    ~Container() { (void)sd_bus_message_close_container(m_message); }

private:
    sd_bus_message *m_message;
};

void appendText(sd_bus_message *to, const std::string &text)
{
    check(sd_bus_message_append_basic(to, SD_BUS_TYPE_STRING, text.c_str()), writing);
}

struct AppendVariant {
    sd_bus_message *to;

    void operator()(bool truth) const
    {
        const int wire = truth ? 1 : 0;
        check(sd_bus_message_append(to, "v", "b", wire), writing);
    }
    void operator()(uint32_t number) const
    {
        check(sd_bus_message_append(to, "v", "u", number), writing);
    }
    void operator()(int64_t number) const
    {
        check(sd_bus_message_append(to, "v", "x", number), writing);
    }
    void operator()(const std::string &text) const
    {
        check(sd_bus_message_append(to, "v", "s", text.c_str()), writing);
    }
    void operator()(const std::vector<uint32_t> &numbers) const
    {
        const Container variant(to, SD_BUS_TYPE_VARIANT, "au");
        check(sd_bus_message_append_array(to, SD_BUS_TYPE_UINT32, numbers.data(),
                                          numbers.size() * sizeof(uint32_t)),
              writing);
    }
    void operator()(const std::vector<Ipv6Bytes> &addresses) const
    {
        const Container variant(to, SD_BUS_TYPE_VARIANT, "aay");
        const Container array(to, SD_BUS_TYPE_ARRAY, "ay");
        for (const Ipv6Bytes &address : addresses)
            check(sd_bus_message_append_array(to, SD_BUS_TYPE_BYTE, address.data(), address.size()),
                  writing);
    }
};

void appendEntry(sd_bus_message *to, const Edit &edit)
{
    if (!edit.value)
        return;
    const Container dictionary(to, SD_BUS_TYPE_DICT_ENTRY, entry);
    appendText(to, edit.key);
    std::visit(AppendVariant{to}, *edit.value);
}

void appendEntriesOf(sd_bus_message *to, std::string_view name, std::span<const Edit> edits)
{
    for (const Edit &edit : edits) {
        if (edit.group == name)
            appendEntry(to, edit);
    }
}

bool isEdited(std::span<const Edit> edits, std::string_view name, std::string_view key)
{
    return std::ranges::any_of(
        edits, [&](const Edit &edit) { return edit.group == name && edit.key == key; });
}

std::string readText(sd_bus_message *from)
{
    const char *text = nullptr;
    check(sd_bus_message_read_basic(from, SD_BUS_TYPE_STRING, &text), writing);
    return text;
}

void copyEntries(sd_bus_message *to, sd_bus_message *from, std::string_view name,
                 std::span<const Edit> edits)
{
    check(sd_bus_message_enter_container(from, SD_BUS_TYPE_ARRAY, "{sv}"), writing);
    while (sd_bus_message_enter_container(from, SD_BUS_TYPE_DICT_ENTRY, entry) > 0) {
        const std::string key = readText(from);
        if (isEdited(edits, name, key)) {
            check(sd_bus_message_skip(from, "v"), writing);
        } else {
            const Container dictionary(to, SD_BUS_TYPE_DICT_ENTRY, entry);
            appendText(to, key);
            check(sd_bus_message_copy(to, from, 0), writing);
        }
        check(sd_bus_message_exit_container(from), writing);
    }
    check(sd_bus_message_exit_container(from), writing);
}

void appendGroup(sd_bus_message *to, const std::string &name, std::span<const Edit> edits)
{
    const Container dictionary(to, SD_BUS_TYPE_DICT_ENTRY, group);
    appendText(to, name);
    const Container entries(to, SD_BUS_TYPE_ARRAY, "{sv}");
    appendEntriesOf(to, name, edits);
}

// Groups of the edits beside those known already.
void appendOtherGroups(sd_bus_message *to, std::span<const Edit> edits,
                       std::vector<std::string> known)
{
    for (const Edit &edit : edits) {
        if (!edit.value || std::ranges::find(known, edit.group) != known.end())
            continue;
        known.push_back(edit.group);
        appendGroup(to, edit.group, edits);
    }
}

std::vector<std::string> copyGroups(sd_bus_message *to, sd_bus_message *from,
                                    std::span<const Edit> edits)
{
    std::vector<std::string> copied;
    check(sd_bus_message_enter_container(from, SD_BUS_TYPE_ARRAY, "{sa{sv}}"), writing);
    while (sd_bus_message_enter_container(from, SD_BUS_TYPE_DICT_ENTRY, group) > 0) {
        copied.push_back(readText(from));
        const Container dictionary(to, SD_BUS_TYPE_DICT_ENTRY, group);
        appendText(to, copied.back());
        const Container entries(to, SD_BUS_TYPE_ARRAY, "{sv}");
        copyEntries(to, from, copied.back(), edits);
        appendEntriesOf(to, copied.back(), edits);
        check(sd_bus_message_exit_container(from), writing);
    }
    check(sd_bus_message_exit_container(from), writing);
    return copied;
}

} // namespace

void appendEdited(const Message &to, const Message &settings, std::span<const Edit> edits)
{
    check(sd_bus_message_rewind(settings.get(), 1), writing);
    const Container groups(to.get(), SD_BUS_TYPE_ARRAY, "{sa{sv}}");
    appendOtherGroups(to.get(), edits, copyGroups(to.get(), settings.get(), edits));
}

void appendSettings(const Message &to, std::span<const Edit> entries)
{
    const Container groups(to.get(), SD_BUS_TYPE_ARRAY, "{sa{sv}}");
    appendOtherGroups(to.get(), entries, {});
}

} // namespace velq::nettools
