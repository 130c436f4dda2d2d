#include "platform/LaunchAgents.h"

#include "platform/linux/launchagent/Agent.h"
#include "platform/linux/launchagent/AgentFiles.h"
#include "platform/linux/launchagent/Domain.h"
#include "platform/linux/launchagent/Error.h"
#include "platform/linux/launchagent/ServiceManager.h"

namespace velq
{

void forgetLaunchAgent(const QString &label)
{
    const std::string name = label.toStdString();
    if (launchagent::isLabel(name))
        launchagent::AgentFiles(launchagent::Domain::ofCaller(), name).remove();
}

bool launchAgentIsRunning(const QString &label)
try {
    const std::string name = label.toStdString();
    return launchagent::isLabel(name)
        && launchagent::ServiceManager(launchagent::Domain::ofCaller())
               .unit(name + ".service")
               .activeState
        == "active";
} catch (const launchagent::Error &) {
    return false;
}

} // namespace velq
