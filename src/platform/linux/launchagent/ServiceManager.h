#pragma once

#include "platform/linux/launchagent/Domain.h"

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

struct sd_bus;
struct sd_bus_message;

namespace velq::launchagent
{

/// A conversation with systemd, the person's or the system's own. One thread. Everything throws
/// Error when systemd refuses or does not answer.
class ServiceManager
{
public:
    /// Over systemd's own socket, which is there whatever message bus the session uses.
    explicit ServiceManager(const Domain &domain);

    struct Unit {
        std::string path;      ///< the object's
        std::string loadState; ///< "loaded", "not-found", ...
        std::string file;      ///< empty when it has none
        std::string activeState;
        int mainPid = 0; ///< 0 when nothing runs
        std::chrono::system_clock::time_point started;
    };
    /// Reads the unit in if systemd does not know it yet.
    Unit unit(const std::string &name);

    /// Whether the calling process runs inside this unit, and would end with it.
    bool isOurOwn(const Unit &unit);

    /// For its target's start. True when systemd must reload() to see what that changed.
    bool enable(const std::string &name);
    void reload();
    /// For everything that is started from now on.
    void changeEnvironment(const std::vector<std::string> &absent,
                           const std::vector<std::string> &assignments);

    enum class Wait { UntilDone, No };
    void start(const std::string &name, Wait wait);
    void restart(const std::string &name, Wait wait);
    void stop(const std::string &name, Wait wait);

    /// Starts a program, the first of the words, with the others as its arguments, in a service of
    /// its own that takes this environment, lives independently of the caller and is forgotten when
    /// it ends. Returns when the program runs.
    void startTransient(const std::string &name, const std::vector<std::string> &words,
                        const std::vector<std::string> &environment);

private:
    struct Close {
        void operator()(sd_bus *bus) const noexcept;
    };
    struct Unref {
        void operator()(sd_bus_message *message) const noexcept;
    };
    using Message = std::unique_ptr<sd_bus_message, Unref>;
    struct Address {
        const char *object;
        const char *interface;
        const char *member;
    };

    Message request(const Address &address);
    Message call(const Message &request);
    Message property(const std::string &object, const char *interface, const char *name);
    std::string text(const std::string &object, const char *interface, const char *name);
    void runJob(const char *method, const std::string &name, Wait wait);
    void finishJob(const Message &request, const std::string &name);
    void processUntil(const std::function<bool()> &condition, const std::string &name);

    std::unique_ptr<sd_bus, Close> m_bus;
};

} // namespace velq::launchagent
