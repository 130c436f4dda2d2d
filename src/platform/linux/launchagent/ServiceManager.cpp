#include "platform/linux/launchagent/ServiceManager.h"

#include "platform/linux/launchagent/Error.h"

#include <cerrno>
#include <cstring>
#include <map>
#include <systemd/sd-bus.h>
#include <unistd.h>

namespace velq::launchagent
{

namespace
{

using namespace std::chrono_literals;
using std::chrono::duration_cast;
using std::chrono::microseconds;
using std::chrono::steady_clock;

// Longer than a unit of ours may take to stop.
constexpr auto patience = 30s;

constexpr const char *destination = "org.freedesktop.systemd1";
constexpr const char *managerPath = "/org/freedesktop/systemd1";
constexpr const char *managerInterface = "org.freedesktop.systemd1.Manager";
constexpr const char *unitInterface = "org.freedesktop.systemd1.Unit";
constexpr const char *serviceInterface = "org.freedesktop.systemd1.Service";

class BusError
{
public:
    BusError() = default;
    BusError(const BusError &) = delete;
    BusError &operator=(const BusError &) = delete;
    ~BusError() { sd_bus_error_free(&m_error); }
    sd_bus_error *get() { return &m_error; }
    std::string words(int result) const
    {
        return m_error.message != nullptr ? m_error.message : std::strerror(-result);
    }

private:
    sd_bus_error m_error = SD_BUS_ERROR_NULL;
};

struct UnrefSlot {
    void operator()(sd_bus_slot *slot) const noexcept { sd_bus_slot_unref(slot); }
};

void require(int result, const std::string &what = "the service manager's answer is not understood")
{
    if (result < 0)
        throw Error(what + ": " + std::strerror(-result));
}

void appendTexts(sd_bus_message *message, const std::vector<std::string> &texts)
{
    require(sd_bus_message_open_container(message, 'a', "s"));
    for (const std::string &text : texts)
        require(sd_bus_message_append(message, "s", text.c_str()));
    require(sd_bus_message_close_container(message));
}

// A service's property, whose value `appendValue` writes.
void appendProperty(sd_bus_message *message, const char *name, const char *type,
                    const std::function<void()> &appendValue)
{
    require(sd_bus_message_open_container(message, 'r', "sv"));
    require(sd_bus_message_append(message, "s", name));
    require(sd_bus_message_open_container(message, 'v', type));
    appendValue();
    require(sd_bus_message_close_container(message));
    require(sd_bus_message_close_container(message));
}

void appendCommand(sd_bus_message *message, const std::vector<std::string> &words)
{
    appendProperty(message, "ExecStartEx", "a(sasas)", [&] {
        require(sd_bus_message_open_container(message, 'a', "(sasas)"));
        require(sd_bus_message_open_container(message, 'r', "sasas"));
        require(sd_bus_message_append(message, "s", words.front().c_str()));
        appendTexts(message, words);
        require(sd_bus_message_append(message, "as", 1, "no-env-expand"));
        require(sd_bus_message_close_container(message));
        require(sd_bus_message_close_container(message));
    });
}

// Collects how jobs end, by their object paths.
int onJobRemoved(sd_bus_message *message, void *data, sd_bus_error *)
{
    uint32_t number = 0;
    const char *job = nullptr;
    const char *unit = nullptr;
    const char *result = nullptr;
    if (sd_bus_message_read(message, "uoss", &number, &job, &unit, &result) >= 0)
        static_cast<std::map<std::string, std::string> *>(data)->insert_or_assign(job, result);
    return 0;
}

} // namespace

void ServiceManager::Close::operator()(sd_bus *bus) const noexcept
{
    sd_bus_close_unref(bus);
}

void ServiceManager::Unref::operator()(sd_bus_message *message) const noexcept
{
    sd_bus_message_unref(message);
}

ServiceManager::ServiceManager(const Domain &domain)
{
    const std::string nobody = domain.isSystem
        ? "systemd does not run on this machine, so there is nobody to load agents"
        : "no systemd runs for this user, so there is nobody to load agents";
    sd_bus *bus = nullptr;
    require(sd_bus_new(&bus));
    m_bus.reset(bus);
    require(sd_bus_set_address(bus, ("unix:path=" + domain.socket.string()).c_str()));
    if (sd_bus_start(bus) < 0)
        throw Error(nobody);
}

ServiceManager::Message ServiceManager::request(const Address &address)
{
    sd_bus_message *message = nullptr;
    require(sd_bus_message_new_method_call(m_bus.get(), &message, destination, address.object,
                                           address.interface, address.member));
    return Message(message);
}

ServiceManager::Message ServiceManager::call(const Message &request)
{
    BusError error;
    sd_bus_message *reply = nullptr;
    constexpr auto limit = duration_cast<microseconds>(patience);
    const int result = sd_bus_call(m_bus.get(), request.get(), static_cast<uint64_t>(limit.count()),
                                   error.get(), &reply);
    if (result < 0)
        throw Error("the service manager refuses: " + error.words(result));
    return Message(reply);
}

ServiceManager::Message ServiceManager::property(const std::string &object, const char *interface,
                                                 const char *name)
{
    const Message get = request({object.c_str(), "org.freedesktop.DBus.Properties", "Get"});
    require(sd_bus_message_append(get.get(), "ss", interface, name));
    return call(get);
}

std::string ServiceManager::text(const std::string &object, const char *interface, const char *name)
{
    const Message reply = property(object, interface, name);
    const char *value = nullptr;
    require(sd_bus_message_read(reply.get(), "v", "s", &value));
    return value;
}

ServiceManager::Unit ServiceManager::unit(const std::string &name)
{
    const Message load = request({managerPath, managerInterface, "LoadUnit"});
    require(sd_bus_message_append(load.get(), "s", name.c_str()));
    const Message reply = call(load);
    const char *path = nullptr;
    require(sd_bus_message_read(reply.get(), "o", &path));

    Unit unit;
    unit.path = path;
    unit.loadState = text(unit.path, unitInterface, "LoadState");
    unit.file = text(unit.path, unitInterface, "FragmentPath");
    unit.activeState = text(unit.path, unitInterface, "ActiveState");
    uint32_t pid = 0;
    require(sd_bus_message_read(property(unit.path, serviceInterface, "MainPID").get(), "v", "u",
                                &pid));
    unit.mainPid = static_cast<int>(pid);
    uint64_t started = 0;
    require(sd_bus_message_read(
        property(unit.path, serviceInterface, "ExecMainStartTimestamp").get(), "v", "t", &started));
    unit.started = std::chrono::system_clock::time_point(microseconds(started));
    return unit;
}

bool ServiceManager::isOurOwn(const Unit &unit)
{
    const Message ask = request({managerPath, managerInterface, "GetUnitByPID"});
    require(sd_bus_message_append(ask.get(), "u", static_cast<uint32_t>(getpid())));
    sd_bus_message *answer = nullptr;
    // An error is an answer, too: this process is in none of this manager's units.
    if (sd_bus_call(m_bus.get(), ask.get(), 0, nullptr, &answer) < 0)
        return false;
    const Message reply(answer);
    const char *path = nullptr;
    require(sd_bus_message_read(reply.get(), "o", &path));
    return unit.path == path;
}

bool ServiceManager::enable(const std::string &name)
{
    const Message enable = request({managerPath, managerInterface, "EnableUnitFiles"});
    appendTexts(enable.get(), {name});
    require(sd_bus_message_append(enable.get(), "bb", 0, 0));
    const Message reply = call(enable);
    int carriesInstallInfo = 0;
    require(sd_bus_message_read(reply.get(), "b", &carriesInstallInfo));
    require(sd_bus_message_enter_container(reply.get(), 'a', "(sss)"));
    return sd_bus_message_at_end(reply.get(), 0) == 0;
}

void ServiceManager::reload()
{
    (void)call(request({managerPath, managerInterface, "Reload"}));
}

void ServiceManager::changeEnvironment(const std::vector<std::string> &absent,
                                       const std::vector<std::string> &assignments)
{
    const Message change = request({managerPath, managerInterface, "UnsetAndSetEnvironment"});
    appendTexts(change.get(), absent);
    appendTexts(change.get(), assignments);
    (void)call(change);
}

void ServiceManager::start(const std::string &name, Wait wait)
{
    runJob("StartUnit", name, wait);
}

void ServiceManager::restart(const std::string &name, Wait wait)
{
    runJob("RestartUnit", name, wait);
}

void ServiceManager::stop(const std::string &name, Wait wait)
{
    runJob("StopUnit", name, wait);
}

void ServiceManager::runJob(const char *method, const std::string &name, Wait wait)
{
    const Message run = request({managerPath, managerInterface, method});
    require(sd_bus_message_append(run.get(), "ss", name.c_str(), "replace"));
    if (wait == Wait::UntilDone)
        finishJob(run, name);
    else
        (void)call(run);
}

void ServiceManager::finishJob(const Message &request, const std::string &name)
{
    std::map<std::string, std::string> results;
    sd_bus_slot *slot = nullptr;
    require(sd_bus_match_signal(m_bus.get(), &slot, nullptr, managerPath, managerInterface,
                                "JobRemoved", onJobRemoved, &results));
    const std::unique_ptr<sd_bus_slot, UnrefSlot> listening(slot);
    (void)call(this->request({managerPath, managerInterface, "Subscribe"}));
    const Message reply = call(request);
    const char *job = nullptr;
    require(sd_bus_message_read(reply.get(), "o", &job));
    processUntil([&] { return results.contains(job); }, name);
    if (results[job] != "done" && results[job] != "skipped")
        throw Error(name + " could not be started or stopped: " + results[job]);
}

void ServiceManager::processUntil(const std::function<bool()> &condition, const std::string &name)
{
    const auto deadline = steady_clock::now() + patience;
    while (!condition()) {
        const int done = sd_bus_process(m_bus.get(), nullptr);
        require(done, "the service manager is gone");
        const auto left = duration_cast<microseconds>(deadline - steady_clock::now());
        if (left <= 0s)
            throw Error(name + " takes too long");
        if (done == 0)
            (void)sd_bus_wait(m_bus.get(), static_cast<uint64_t>(left.count()));
    }
}

void ServiceManager::startTransient(const std::string &name, const std::vector<std::string> &words,
                                    const std::vector<std::string> &environment)
{
    const Message start = request({managerPath, managerInterface, "StartTransientUnit"});
    sd_bus_message *message = start.get();
    require(sd_bus_message_append(message, "ss", name.c_str(), "fail"));
    require(sd_bus_message_open_container(message, 'a', "(sv)"));
    require(sd_bus_message_append(message, "(sv)", "Type", "s", "exec"));
    require(sd_bus_message_append(message, "(sv)", "CollectMode", "s", "inactive-or-failed"));
    // What the program leaves running is its own affair.
    require(sd_bus_message_append(message, "(sv)", "ExitType", "s", "cgroup"));
    appendCommand(message, words);
    appendProperty(message, "Environment", "as", [&] { appendTexts(message, environment); });
    require(sd_bus_message_close_container(message));
    require(sd_bus_message_append(message, "a(sa(sv))", 0));
    finishJob(start, name);
}

} // namespace velq::launchagent
