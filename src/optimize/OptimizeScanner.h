#pragma once

#include "scanner/ItemScanner.h"

#include <QString>
#include <QtGlobal>

namespace velq
{

class OptimizeScannerDelegate;

/// What slows a connection down that works: the network card that has priority, the MTU, the card
/// cache and the name servers.
///
/// What it knows comes from the text of command-line tools; one that is missing or fails gives an
/// empty text, which each detector reads as it says. Every operation blocks its caller while the
/// tools run.
class OptimizeScanner : public ItemScanner
{
public:
    /// By the bits of errorStatus(), in the order in which they are looked for.
    enum Problem : qint64 {
        CardPriorityProblem = 0x1,
        MTUProblem = 0x10,
        CardCacheProblem = 0x100,
        NameServerProblem = 0x1000
    };

    /// The process's one; made at the first use, never destroyed.
    static OptimizeScanner &shareScanner();

    /// Looks for all four problems. A stop ends it before the next one; the items behind that keep
    /// what an earlier scan has found. An item that is ignored for good is always fine.
    void scan() override;
    /// Repairs, as root, what errorStatus() tells of, and scans again. Whether a repair worked only
    /// that scan shows. A stop ends it before the next repair, and without the scan.
    ///
    /// Services other than Ethernet and Wi-Fi are put behind those, as the diagnosis (the shared
    /// NetworkScanner) knows them; before its first scan it knows none.
    void speedup() override;

    /// Whether Wi-Fi carries the traffic although a wired connection is up, too. No speed is
    /// measured.
    bool wouldSwitchNetwork() const;
    /// Whether currentMTU() is anything but 1500; also when there is none.
    bool detectMTU();
    /// The largest packet, in bytes, that passes to a public host. A timeout alone ends the search;
    /// only one along with an unknown host makes it try a smaller one. 1500 when stopScan() ends
    /// it.
    qint64 detectISPMaxMTU() const;
    /// The MTU of the current interface as the tool prints it, kept in MTU(); several in one piece.
    QString currentMTU();
    /// Whether the user defaults' "cacheDate" lies a day back or more; also when there is none.
    /// Nothing of ours writes it.
    bool shouldFlushNetworkCardCache() const;
    /// Whether one of the public hosts lets an echo request time out. Any other failure is none of
    /// the name servers.
    bool dnsServerError() const;

    /// Not owned; none at first.
    OptimizeScannerDelegate *delegate() const { return m_delegate; }
    void setDelegate(OptimizeScannerDelegate *delegate) { m_delegate = delegate; }
    /// The last one that currentMTU() has read; 0 for what is no number.
    qint64 MTU() const { return m_mtu; }
    void setMTU(qint64 mtu) { m_mtu = mtu; }

protected:
    OptimizeScanner();

private:
    void scanModule2();
    void report(Problem problem);

    void preferEthernet() const;
    void resetMTU(const QString &device) const;
    void replaceNameServer(const QString &service) const;

    OptimizeScannerDelegate *m_delegate = nullptr;
    qint64 m_mtu = 0;
};

} // namespace velq
