#include "cli/StoppedKeeper.h"

#include "common/Log.h"
#include "platform/NetworkKeeper.h"

namespace velq::cli
{

void explainStoppedKeeper()
{
    if (NetworkKeeper::state() == NetworkKeeper::State::Stopped)
        log(QStringLiteral("velq: %1 is installed but does not run; to start it: %2")
                .arg(NetworkKeeper::name(), NetworkKeeper::startCommand()));
}

} // namespace velq::cli
