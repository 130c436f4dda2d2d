#include "cli/Diagnose.h"

#include "cli/ConsoleHost.h"
#include "cli/Examination.h"
#include "cli/TerminalPanel.h"
#include "diagnosis/NetworkScanner.h"

namespace velq::cli
{

Report diagnose(const Arguments &arguments, Interruption &interruption)
{
    using Audience = TerminalPanel::Audience;
    Progress progress(arguments.json);
    TerminalPanel panel(arguments.json ? Audience::Program : Audience::Person, interruption,
                        progress);
    ConsoleHost host(panel);
    NetworkScanner &scanner = NetworkScanner::shareScanner();
    scanner.setHost(&host);
    const auto finally = qScopeGuard([&scanner] { scanner.setHost(nullptr); });
    // A router is another machine.
    return examined(scanner,
                    {"Diagnosing the connection", "Repairing the connection",
                     "To try and repair that: velq diagnose --repair",
                     ~NetworkScanner::RouterProblem},
                    arguments, interruption, progress);
}

} // namespace velq::cli
