#include "nettools/Launchctl.h"

#include "platform/linux/launchagent/Error.h"
#include "platform/linux/launchagent/Loading.h"

namespace velq::nettools
{

namespace
{

using Act = void (*)(const std::string &path);

Act actNamed(std::string_view name)
{
    if (name == "load")
        return launchagent::load;
    return name == "unload" ? launchagent::unload : nullptr;
}

} // namespace

Outcome launchctl(Arguments arguments, Output &)
{
    const Act act = arguments.empty() ? nullptr : actNamed(arguments.front());
    if (act == nullptr)
        return Outcome::misused("what to do? load or unload");
    Arguments files = arguments.subspan(1);
    if (!files.empty() && files.front() == "-w")
        files = files.subspan(1);
    if (files.size() != 1 || files.front().empty())
        return Outcome::misused("which one? The path of one property list");
    try {
        act(std::string(files.front()));
    } catch (const launchagent::Error &error) {
        return Outcome::failed(error.what());
    }
    return Outcome::done();
}

} // namespace velq::nettools
