#pragma once

#include "scanner/ItemScanner.h"

#include <QtGlobal>

#include <chrono>

namespace velq
{

class AppNetworkAppdelegate;

/// The acceleration of single applications: Safari's by a preference of its own, that of iCloud,
/// iTunes and the App Store together by lines in the system's hosts file. What is not accelerated
/// is a problem.
///
/// Nothing undoes what a speed-up has done. Every operation blocks its caller while the tools run.
class AppNetworkScanner : public ItemScanner
{
public:
    /// By the bits of errorStatus().
    enum Problem : qint64 { SafariProblem = 0x1, HostsProblem = 0x10 };

    /// The process's one; made at the first use, never destroyed.
    static AppNetworkScanner &shareScanner();

    /// Looks which accelerations are off. An item that is ignored for good shows as accelerated,
    /// yet hosts without acceleration are a problem that is told, even where all three items that
    /// share it are ignored. A stop ends it before Safari or before the hosts; what is behind keeps
    /// what an earlier scan has found.
    void scan() override;
    /// Switches on what errorStatus() tells of, and waits five seconds. Whether it worked only the
    /// next scan shows. A stop ends it before Safari or before the hosts, and without the wait.
    void speedup() override;

    /// Whether Safari's delay is anything but the accelerated one; also when none is set.
    bool needOptSafari() const;
    /// Whether the hosts file has no line with our domain, whatever its address. Asked as root.
    bool needModifyHosts() const;
    /// Opens the hosts file to everybody and appends our lines, as root. Once more each time.
    void modifyHosts() const;

    /// Not owned; none at first.
    AppNetworkAppdelegate *delegate() const { return m_delegate; }
    void setDelegate(AppNetworkAppdelegate *delegate) { m_delegate = delegate; }

protected:
    AppNetworkScanner();

    /// How a speed-up waits for the applications.
    virtual void sleepFor(std::chrono::seconds duration) const;

private:
    void checkSafari();
    void checkHosts();
    void report(Problem problem);

    AppNetworkAppdelegate *m_delegate = nullptr;
};

} // namespace velq
