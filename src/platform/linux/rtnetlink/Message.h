#pragma once

#include "platform/linux/rtnetlink/Address.h"
#include "platform/linux/rtnetlink/Reader.h"

#include <libmnl/libmnl.h>
#include <linux/rtnetlink.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <optional>
#include <span>
#include <string>

/// How messages are made and taken apart; for the tables of this folder only.
namespace velq::rtnetlink
{

using RequestBuffer = std::array<std::byte, 256>;

template <typename Header>
Header *startRequest(RequestBuffer &buffer, uint16_t type, uint16_t flags)
{
    nlmsghdr *message = mnl_nlmsg_put_header(buffer.data());
    message->nlmsg_type = type;
    message->nlmsg_flags = static_cast<uint16_t>(NLM_F_REQUEST | flags);
    return static_cast<Header *>(mnl_nlmsg_put_extra_header(message, sizeof(Header)));
}

inline nlmsghdr *header(RequestBuffer &buffer)
{
    return reinterpret_cast<nlmsghdr *>(buffer.data());
}

inline std::span<const uint8_t> payload(const nlattr *attribute)
{
    return {static_cast<const uint8_t *>(mnl_attr_get_payload(attribute)),
            mnl_attr_get_payload_len(attribute)};
}

inline uint32_t number(const nlattr *attribute)
{
    return mnl_attr_validate(attribute, MNL_TYPE_U32) < 0 ? 0 : mnl_attr_get_u32(attribute);
}

inline std::string text(const nlattr *attribute)
{
    const auto bytes = payload(attribute);
    const auto *begin = reinterpret_cast<const char *>(bytes.data());
    return {begin, strnlen(begin, bytes.size())};
}

inline Address addressFrom(uint8_t family, std::span<const uint8_t> bytes)
{
    Address address;
    address.family = family;
    if (bytes.size() != address.size())
        return {};
    std::ranges::copy(bytes, address.bytes.begin());
    return address;
}

// Attributes of one message, or of one nested attribute, each handed to `use` with its type.
template <typename Use> void eachAttribute(const void *from, size_t length, Use use)
{
    const auto *attribute = static_cast<const nlattr *>(from);
    auto left = static_cast<int>(length);
    while (mnl_attr_ok(attribute, left)) {
        use(mnl_attr_get_type(attribute), attribute);
        left -= static_cast<int>(MNL_ALIGN(attribute->nla_len));
        attribute = mnl_attr_next(attribute);
    }
}

template <typename Header, typename Use> void eachAttribute(const nlmsghdr &message, Use use)
{
    const size_t used = MNL_ALIGN(sizeof(Header));
    const size_t length = mnl_nlmsg_get_payload_len(&message);
    if (length >= used)
        eachAttribute(mnl_nlmsg_get_payload_offset(&message, sizeof(Header)), length - used, use);
}

template <typename Header> const Header *headerOf(const nlmsghdr &message)
{
    if (mnl_nlmsg_get_payload_len(&message) < sizeof(Header))
        return nullptr;
    return static_cast<const Header *>(mnl_nlmsg_get_payload(&message));
}

template <typename Record, typename Parse>
Socket::Visitor parsed(const Reader<Record> &reader, Parse parse)
{
    return [&reader, parse](const nlmsghdr &message) {
        const std::optional<Record> record = parse(message);
        return record ? reader(*record) : Socket::Visit::Continue;
    };
}

// The one record that a request without NLM_F_DUMP is answered with.
template <typename Record, typename Parse>
std::optional<Record> askForOne(Socket &socket, nlmsghdr *request, Parse parse)
{
    std::optional<Record> found;
    const Reader<Record> keep = [&](const Record &record) {
        found = record;
        return Socket::Visit::Continue;
    };
    if (!socket.ask(request, parsed(keep, parse)))
        return std::nullopt;
    return found;
}

} // namespace velq::rtnetlink
