#include "optimize/OptimizeScanner.h"

#include "optimize/OptimizeResults.h"
#include "scanner/OptimizeScannerDelegate.h"

#include <array>

namespace velq
{

namespace
{

ItemScanner::Array items()
{
    return {
        NetData::make(
            {.title = QStringLiteral("Optimize Network Card Priority"),
             .des = QStringLiteral("When both cable network and wireless network are used "
                                   "simultaneously, Velq will automatically use the faster one."),
             .image = QStringLiteral("icon_nic"),
             .ignoreKey = QStringLiteral("OptimizeKey1")}),
        NetData::make({.title = QStringLiteral("Optimize\u00a0MTU Detection"),
                       .des = QStringLiteral(
                           "Most network equipment' MTU is 1500 bytes. If your local machine's "
                           "MTU is bigger than the gateway's MTU, large data package will be "
                           "split to transmit."),
                       .image = QStringLiteral("icon_mtu"),
                       .ignoreKey = QStringLiteral("OptimizeKey2")}),
        NetData::make({.title = QStringLiteral("Flush Ethernet Cards Cache"),
                       .des = QStringLiteral(
                           "OS X keeps a local cache of Ethernet Cards Cache when you surfing "
                           "the Internet. But sometimes it may be necessary to reset the cache "
                           "immediately."),
                       .image = QStringLiteral("icon_cardscache"),
                       .ignoreKey = QStringLiteral("OptimizeKey3")}),
        NetData::make({.title = QStringLiteral("Optimize & Protect\u00a0DNS"),
                       .des = QStringLiteral(
                           "DNS Optimization can make your website parsed by DNS server quicker "
                           "and load your website faster."),
                       .image = QStringLiteral("icon_dns_optimize"),
                       .ignoreKey = QStringLiteral("OptimizeKey4")}),
    };
}

} // namespace

OptimizeScanner &OptimizeScanner::shareScanner()
{
    // Never destroyed: somebody may still scan when the program ends.
    static auto *const scanner = new OptimizeScanner;
    return *scanner;
}

OptimizeScanner::OptimizeScanner()
    : ItemScanner(items())
{
}

void OptimizeScanner::scan()
{
    ItemScanner::scan();
    forgetLastScan();
    scanModule2();
}

void OptimizeScanner::scanModule2()
{
    struct Check {
        Problem problem;
        bool (*isThere)(OptimizeScanner &);
    };
    const std::array<Check, optimizeresults::Count> checks{{
        {CardPriorityProblem,
         [](OptimizeScanner &self) {
             return self.wouldSwitchNetwork();
         }},
        {MTUProblem,
         [](OptimizeScanner &self) {
             return self.detectMTU();
         }},
        {CardCacheProblem,
         [](OptimizeScanner &self) {
             return self.shouldFlushNetworkCardCache();
         }},
        {NameServerProblem,
         [](OptimizeScanner &self) {
             return self.dnsServerError();
         }},
    }};
    qsizetype item = 0;
    for (const auto &[fine, problem] : optimizeresults::lines()) {
        if (stopScanFlag())
            return;
        const Check &check = checks.at(static_cast<std::size_t>(item));
        const bool found = check.isThere(*this) && !isIgnored(item);
        setResult(item++, found ? problem : fine);
        if (found)
            report(check.problem);
    }
}

void OptimizeScanner::report(Problem problem)
{
    setErrorStatus(errorStatus() | problem);
    if (m_delegate != nullptr)
        m_delegate->optimizeScannerStatus(problem);
}

} // namespace velq
