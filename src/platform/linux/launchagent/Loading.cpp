#include "platform/linux/launchagent/Loading.h"

#include "platform/linux/launchagent/Agent.h"
#include "platform/linux/launchagent/AgentFiles.h"
#include "platform/linux/launchagent/Domain.h"
#include "platform/linux/launchagent/Error.h"
#include "platform/linux/launchagent/ServiceManager.h"
#include "platform/linux/launchagent/SessionVariables.h"
#include "platform/linux/launchagent/UnitText.h"

#include <filesystem>
#include <unistd.h>

namespace velq::launchagent
{

namespace
{

namespace fs = std::filesystem;
using Unit = ServiceManager::Unit;
using Wait = ServiceManager::Wait;

// The program's own bundle carries the tool and lives as long as the agent; the caller's may not.
std::string lastingTool(const Agent &agent)
{
    const fs::path carried = fs::path(agent.program).parent_path() / "../Helpers/launchctl";
    if (access(carried.c_str(), X_OK) == 0)
        return carried.lexically_normal();
    std::error_code ignored;
    return fs::read_symlink("/proc/self/exe", ignored);
}

Wait unlessOurOwn(ServiceManager &manager, const Unit &unit)
{
    return manager.isOurOwn(unit) ? Wait::No : Wait::UntilDone;
}

void requireFree(const Unit &unit, const AgentFiles &files, const Agent &agent)
{
    const bool elsewhere = !unit.file.empty() && unit.file != files.unit();
    if (unit.loadState != "not-found" && (elsewhere || files.unitIsForeign()))
        throw Error("there is a service '" + agent.unit()
                    + "' already, and it is no launch agent's");
}

// True when systemd has another definition now.
bool define(ServiceManager &manager, const Agent &agent, const AgentFiles &files,
            const std::string &text)
{
    const bool changed = files.writeUnit(text);
    try {
        const bool linked = manager.enable(agent.unit());
        if (changed || linked)
            manager.reload();
    } catch (const Error &) {
        if (changed)
            files.remove();
        throw;
    }
    return changed;
}

bool runsWith(const Unit &unit, const SessionVariables &session)
{
    return unit.mainPid != 0
        && (session.empty() || session.areThoseOf(environmentOf(unit.mainPid), unit.started));
}

} // namespace

void load(const std::string &path)
{
    const Agent agent = readAgent(path);
    requireProgram(agent);
    const Domain domain = Domain::ofCaller();
    const AgentFiles files(domain, agent.label);
    ServiceManager manager(domain);
    const Unit before = manager.unit(agent.unit());
    requireFree(before, files, agent);

    const auto session = SessionVariables::ofCaller();
    // The system's manager hands its environment to everything that runs on the machine.
    const bool changed =
        define(manager, agent, files,
               unitText(agent, domain,
                        domain.isSystem ? session.assignments() : std::vector<std::string>()));
    files.writeAutostart(autostartText(agent, lastingTool(agent)));
    if (!domain.isSystem && !session.empty())
        manager.changeEnvironment(session.absent(), session.assignments());

    const Wait wait = unlessOurOwn(manager, before);
    if (before.activeState == "active" && !changed
        && (domain.isSystem || runsWith(before, session)))
        return;
    manager.restart(agent.unit(), wait);
}

void unload(const std::string &path)
{
    const Agent agent = readAgent(path);
    const Domain domain = Domain::ofCaller();
    const AgentFiles files(domain, agent.label);
    ServiceManager manager(domain);
    const Unit unit = manager.unit(agent.unit());
    requireFree(unit, files, agent);
    if (unit.loadState != "not-found")
        manager.stop(agent.unit(), unlessOurOwn(manager, unit));
}

} // namespace velq::launchagent
