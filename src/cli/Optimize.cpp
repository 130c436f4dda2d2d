#include "cli/Optimize.h"

#include "cli/Examination.h"
#include "cli/Services.h"
#include "diagnosis/NetworkScanner.h"
#include "optimize/OptimizeScanner.h"

namespace velq::cli
{

namespace
{

// What a diagnosis in the same process would have left behind: without it the scanner knows neither
// the services nor which of them carries the traffic.
void learnNetwork(Progress &progress)
{
    progress.begin(QStringLiteral("Looking at the network"));
    (void)serviceInventory();
    (void)NetworkScanner::hasConnectivity();
    progress.end();
}

} // namespace

Report optimize(const Arguments &arguments, Interruption &interruption)
{
    Progress progress(arguments.json);
    learnNetwork(progress);
    return examined(OptimizeScanner::shareScanner(),
                    {"Looking for what slows the connection down", "Speeding the connection up",
                     "To change that: velq optimize --speedup", ~OptimizeScanner::CardCacheProblem},
                    arguments, interruption, progress);
}

} // namespace velq::cli
