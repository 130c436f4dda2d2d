#include "diagnosis/NetworkScanner.h"

#include <array>

namespace velq
{

namespace
{

struct Item {
    const char *title;
    const char *des;
    const char *image;
    const char *key;
    bool noShowIgnore;
};

constexpr std::array items{
    Item{"Ethernet & Wi-Fi Connectivity",
         "Check the connectivity condition and work status of Ethernet and Wi-Fi.", "icon_ethernet",
         "NetworkKey1", true},
    Item{"Diagnose IP problem",
         "Your Mac may not connect to the Internet due to the failure of obtaining IP address "
         "begins with 169.254.xxx.xxx.",
         "icon_ip", "NetworkKey2", true},
    Item{"Diagnose DNS problem",
         "When DNS server encounters problems, some domains may not be parsed and opened.",
         "icon_dns", "NetworkKey3", true},
    Item{"Diagnose Proxy problem ",
         "After setting HTTP proxy in browsers, some websites may not be accessed or respond "
         "slowly.",
         "icon_http", "NetworkKey4", false},
};

ItemScanner::Array madeItems()
{
    ItemScanner::Array made;
    made.reserve(items.size());
    for (const Item &item : items) {
        made.append(NetData::make({.title = QString::fromLatin1(item.title),
                                   .des = QString::fromLatin1(item.des),
                                   .image = QString::fromLatin1(item.image),
                                   .ignoreKey = QString::fromLatin1(item.key),
                                   .noShowIgnore = item.noShowIgnore}));
    }
    return made;
}

} // namespace

std::atomic<bool> net_connect = false;

NetworkScanner &NetworkScanner::shareScanner()
{
    // Never destroyed: somebody may still scan when the program ends.
    static auto *const scanner = new NetworkScanner;
    return *scanner;
}

NetworkScanner::NetworkScanner()
    : ItemScanner(madeItems())
{
}

void NetworkScanner::speedup()
{
    startFix();
}

} // namespace velq
