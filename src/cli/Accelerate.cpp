#include "cli/Accelerate.h"

#include "appaccel/AppNetworkScanner.h"
#include "cli/Examination.h"

namespace velq::cli
{

Report accelerate(const Arguments &arguments, Interruption &interruption)
{
    Progress progress(arguments.json);
    return examined(AppNetworkScanner::shareScanner(),
                    {"Looking at the applications", "Speeding the applications up",
                     "To change that: velq accelerate --speedup", ~qint64{0}, false},
                    arguments, interruption, progress);
}

} // namespace velq::cli
