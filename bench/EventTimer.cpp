// EventTimer INTERFACE ROUNDS PAUSE_MS signal|lines
// Takes the interface down and up again, ROUNDS times with a pause after each, and prints for each
// how long it took until somebody showed it: "down 3.21" or "up 4.05" in milliseconds, "none" when
// nobody did within a pause. Shown is a NewIcon signal on the session bus, or a line on standard
// input.

#include <systemd/sd-bus.h>

#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <net/if.h>
#include <optional>
#include <poll.h>
#include <string>
#include <string_view>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>

namespace
{

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

/// Something that becomes readable when the state is shown anew.
class Display
{
public:
    Display() = default;
    Display(const Display &) = delete;
    Display &operator=(const Display &) = delete;
    virtual ~Display() = default;

    virtual int descriptor() const = 0;
    /// Takes what is there; whether the state was shown among it.
    virtual bool take() = 0;
};

class Lines : public Display
{
public:
    int descriptor() const override { return STDIN_FILENO; }
    bool take() override
    {
        std::array<char, 4096> text{};
        const ssize_t count = read(STDIN_FILENO, text.data(), text.size());
        return count > 0 && std::memchr(text.data(), '\n', static_cast<size_t>(count)) != nullptr;
    }
};

class Signals : public Display
{
public:
    Signals()
    {
        sd_bus *bus = nullptr;
        m_isOpen = sd_bus_open_user(&bus) >= 0;
        m_bus.reset(bus);
        m_isOpen = m_isOpen
            && sd_bus_match_signal(bus, nullptr, nullptr, nullptr, "org.kde.StatusNotifierItem",
                                   "NewIcon", onSignal, this)
                >= 0;
    }
    bool isOpen() const { return m_isOpen; }
    int descriptor() const override { return sd_bus_get_fd(m_bus.get()); }
    bool take() override
    {
        m_shown = false;
        while (sd_bus_process(m_bus.get(), nullptr) > 0) { }
        return m_shown;
    }

private:
    struct Close {
        void operator()(sd_bus *bus) const noexcept { sd_bus_flush_close_unref(bus); }
    };

    static int onSignal(sd_bus_message *, void *self, sd_bus_error *)
    {
        static_cast<Signals *>(self)->m_shown = true;
        return 0;
    }

    std::unique_ptr<sd_bus, Close> m_bus;
    bool m_isOpen = false;
    bool m_shown = false;
};

bool shownUntil(Display &display, Clock::time_point end)
{
    while (true) {
        const auto left = std::chrono::ceil<milliseconds>(end - Clock::now()).count();
        pollfd watched{display.descriptor(), POLLIN, 0};
        if (left <= 0 || poll(&watched, 1, static_cast<int>(left)) <= 0)
            return false;
        if (display.take())
            return true;
    }
}

bool set(const char *interface, bool up)
{
    const int socket = ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    ifreq request{};
    (void)std::strncpy(request.ifr_name, interface, IFNAMSIZ - 1);
    bool done = ioctl(socket, SIOCGIFFLAGS, &request) == 0;
    const int flags = up ? request.ifr_flags | IFF_UP : request.ifr_flags & ~IFF_UP;
    request.ifr_flags = static_cast<short>(flags);
    done = done && ioctl(socket, SIOCSIFFLAGS, &request) == 0;
    close(socket);
    return done;
}

bool measure(const char *interface, bool up, Display &display, milliseconds pause)
{
    const auto start = Clock::now();
    if (!set(interface, up))
        return false;
    const bool shown = shownUntil(display, start + pause);
    const std::chrono::duration<double, std::milli> taken = Clock::now() - start;
    const std::string time = shown ? std::to_string(taken.count()) : "none";
    (void)std::printf("%s %s\n", up ? "up" : "down", time.c_str());
    // What else is shown of this change must not count for the next one.
    while (shownUntil(display, start + pause)) { }
    return true;
}

int run(const char *interface, long rounds, milliseconds pause, Display &display)
{
    while (shownUntil(display, Clock::now() + pause)) { }
    for (long round = 0; round < rounds; ++round)
        for (const bool up : {false, true})
            if (!measure(interface, up, display, pause))
                return EXIT_FAILURE;
    return EXIT_SUCCESS;
}

} // namespace

int main(int argc, char **argv)
{
    constexpr int expected = 5;
    if (argc != expected)
        return EXIT_FAILURE;
    const long rounds = std::strtol(argv[2], nullptr, 10);
    const milliseconds pause(std::strtol(argv[3], nullptr, 10));
    if (std::string_view(argv[4]) == "lines") {
        Lines lines;
        return run(argv[1], rounds, pause, lines);
    }
    Signals signals;
    return signals.isOpen() ? run(argv[1], rounds, pause, signals) : EXIT_FAILURE;
}
