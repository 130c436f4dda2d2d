#pragma once

#include "platform/linux/rtnetlink/Address.h"

#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <string_view>

namespace velq::testing
{

/// The IPv4 or IPv6 address that is written so; a failure of the test when none is.
inline rtnetlink::Address address(const char *text)
{
    rtnetlink::Address result;
    result.family = std::string_view(text).find(':') == std::string_view::npos ? AF_INET : AF_INET6;
    EXPECT_EQ(inet_pton(result.family, text, result.bytes.data()), 1) << text;
    return result;
}

} // namespace velq::testing
