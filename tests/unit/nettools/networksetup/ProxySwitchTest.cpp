#include "nettools/networksetup/ProxySwitch.h"
#include "nettools/networksetup/Backend.h"

#include <gtest/gtest.h>

namespace
{

using velq::nettools::ProxyAddresses;
using velq::nettools::ProxyKind;
using velq::nettools::ProxySwitch;
using velq::nettools::Refusal;
using Mode = velq::nettools::ProxyState::Mode;

const ProxyAddresses webAlone{{ProxyKind::Web, "w 1"}};
const ProxyAddresses ftpAlone{{ProxyKind::Ftp, "f 2"}};
const ProxyAddresses webAndFtp{{ProxyKind::Web, "w 1"}, {ProxyKind::Ftp, "f 2"}};

TEST(ProxySwitchTest, OneIsOnWhenTheModeIsManualAndItHasAnAddress)
{
    ProxySwitch proxies{{Mode::Manual, {{ProxyKind::Web, "w 1"}, {ProxyKind::Socks, "s 0"}}},
                        ftpAlone};
    EXPECT_TRUE(proxies.proxy(ProxyKind::Web).enabled);
    EXPECT_FALSE(proxies.proxy(ProxyKind::Socks).enabled);
    EXPECT_FALSE(proxies.proxy(ProxyKind::Ftp).enabled);
    EXPECT_EQ(proxies.proxy(ProxyKind::Ftp).server, "f");
    EXPECT_EQ(proxies.proxy(ProxyKind::SecureWeb).server, "");
    for (const Mode mode : {Mode::None, Mode::Automatic}) {
        proxies.desktop.mode = mode;
        EXPECT_FALSE(proxies.proxy(ProxyKind::Web).enabled);
        EXPECT_EQ(proxies.proxy(ProxyKind::Web).server, "w");
    }
}

TEST(ProxySwitchTest, TheDesktopsAddressGoesBeforeTheKeptOne)
{
    ProxySwitch proxies{{Mode::None, webAlone}, {{ProxyKind::Web, "old 9"}}};
    EXPECT_EQ(proxies.proxy(ProxyKind::Web).server, "w");
    proxies.switchOn(ProxyKind::Web);
    EXPECT_EQ(proxies.desktop.addresses, webAlone);
    EXPECT_EQ(proxies.kept, ProxyAddresses());
}

TEST(ProxySwitchTest, OnlyTheWebProxyHasCredentialsApart)
{
    const ProxySwitch proxies{{Mode::Manual, webAndFtp, true}, {}};
    EXPECT_TRUE(proxies.proxy(ProxyKind::Web).authenticated);
    EXPECT_FALSE(proxies.proxy(ProxyKind::Ftp).authenticated);
}

TEST(ProxySwitchTest, OffKeepsTheAddressAndLeavesTheOthersOn)
{
    ProxySwitch proxies{{Mode::Manual, webAndFtp}, {}};
    proxies.switchOff(ProxyKind::Web);
    EXPECT_EQ(proxies.desktop.mode, Mode::Manual);
    EXPECT_EQ(proxies.desktop.addresses, ftpAlone);
    EXPECT_EQ(proxies.kept, webAlone);
    proxies.switchOff(ProxyKind::Ftp);
    EXPECT_EQ(proxies.desktop.mode, Mode::None);
    EXPECT_EQ(proxies.kept, webAndFtp);
}

TEST(ProxySwitchTest, OnGivesTheAddressBack)
{
    ProxySwitch proxies{{Mode::None, {}}, webAndFtp};
    proxies.switchOn(ProxyKind::Ftp);
    EXPECT_EQ(proxies.desktop.mode, Mode::Manual);
    EXPECT_EQ(proxies.desktop.addresses, ftpAlone);
    EXPECT_EQ(proxies.kept, webAlone);
}

TEST(ProxySwitchTest, AddressesThatAreAtHandDoNotComeOnWithAnother)
{
    ProxySwitch proxies{{Mode::None, webAndFtp}, {}};
    proxies.switchOn(ProxyKind::Ftp);
    EXPECT_EQ(proxies.desktop.addresses, ftpAlone);
    EXPECT_EQ(proxies.kept, webAlone);
    ProxySwitch others{{Mode::None, webAlone}, {}};
    others.set(ProxyKind::Ftp, "f 2");
    EXPECT_EQ(others.desktop.addresses, ftpAlone);
    EXPECT_EQ(others.kept, webAlone);
}

TEST(ProxySwitchTest, OffChangesNothingAboutOneThatIsOff)
{
    for (const Mode mode : {Mode::None, Mode::Automatic}) {
        ProxySwitch proxies{{mode, webAndFtp}, {}};
        proxies.switchOff(ProxyKind::Web);
        EXPECT_EQ(proxies.desktop.addresses, webAndFtp);
        EXPECT_EQ(proxies.desktop.mode, mode);
        EXPECT_TRUE(proxies.kept.empty());
    }
    ProxySwitch proxies{{Mode::Manual, ftpAlone}, webAlone};
    proxies.switchOff(ProxyKind::Web);
    EXPECT_EQ(proxies.desktop.addresses, ftpAlone);
    EXPECT_EQ(proxies.kept, webAlone);
}

TEST(ProxySwitchTest, AnAutomaticModeIsNotTouched)
{
    ProxySwitch proxies{{Mode::Automatic, webAlone}, ftpAlone};
    EXPECT_THROW(proxies.switchOn(ProxyKind::Web), Refusal);
    EXPECT_THROW(proxies.set(ProxyKind::Web, "x 1"), Refusal);
    EXPECT_EQ(proxies.desktop.addresses, webAlone);
    EXPECT_EQ(proxies.kept, ftpAlone);
}

TEST(ProxySwitchTest, WithoutAnAddressNothingComesOn)
{
    ProxySwitch proxies{{Mode::Manual, webAlone}, {{ProxyKind::Ftp, "f 0"}}};
    EXPECT_THROW(proxies.switchOn(ProxyKind::Socks), Refusal);
    EXPECT_THROW(proxies.switchOn(ProxyKind::Ftp), Refusal);
    EXPECT_EQ(proxies.desktop.addresses, webAlone);
}

} // namespace
