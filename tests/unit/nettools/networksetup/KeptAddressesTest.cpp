#include "nettools/networksetup/KeptAddresses.h"

#include <gtest/gtest.h>

namespace
{

using velq::nettools::keptIn;
using velq::nettools::keptText;
using velq::nettools::ProxyAddresses;
using velq::nettools::ProxyKind;

TEST(KeptAddressesTest, ALineForEach)
{
    const ProxyAddresses addresses{{ProxyKind::Ftp, "http://anna:x y@f 21"},
                                   {ProxyKind::Web, "w 80"},
                                   {ProxyKind::SecureWeb, "v 443"},
                                   {ProxyKind::Socks, "fd00::1 1080"}};
    const char *text = "web w 80\nsecureweb v 443\nsocks fd00::1 1080\nftp http://anna:x y@f 21\n";
    EXPECT_EQ(keptText(addresses), text);
    EXPECT_EQ(keptIn(text), addresses);
    EXPECT_EQ(keptText({}), "");
}

TEST(KeptAddressesTest, OtherLinesArePassedOver)
{
    const ProxyAddresses web{{ProxyKind::Web, "w 80"}};
    EXPECT_EQ(keptIn("\n\nweb\nweb \nnews n 119\n ftp f 21\nweb w 80"), web);
    EXPECT_EQ(keptIn(""), ProxyAddresses());
}

} // namespace
