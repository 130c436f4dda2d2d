// IconTimer X Y WIDTH HEIGHT
// Looks at that part of the screen a thousand times a second; prints "ready", then the time of each
// change on the monotonic clock, in nanoseconds, until it is ended.

#include <xcb/xcb.h>

#include <array>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <thread>

namespace
{

using namespace std::chrono_literals;

struct Area {
    int16_t x, y;
    uint16_t width, height;
};

struct Free {
    void operator()(void *memory) const noexcept { std::free(memory); }
};

// Empty when the server does not show it.
std::string pixels(xcb_connection_t *server, xcb_window_t root, const Area &area)
{
    const auto cookie = xcb_get_image(server, XCB_IMAGE_FORMAT_Z_PIXMAP, root, area.x, area.y,
                                      area.width, area.height, UINT32_MAX);
    const std::unique_ptr<xcb_get_image_reply_t, Free> reply(
        xcb_get_image_reply(server, cookie, nullptr));
    if (reply == nullptr)
        return {};
    return {reinterpret_cast<const char *>(xcb_get_image_data(reply.get())),
            static_cast<size_t>(xcb_get_image_data_length(reply.get()))};
}

std::optional<Area> areaFrom(int argc, char **argv)
{
    constexpr int expected = 5;
    if (argc != expected)
        return std::nullopt;
    std::array<long, 4> numbers{};
    for (size_t i = 0; i < numbers.size(); ++i)
        numbers.at(i) = std::strtol(argv[i + 1], nullptr, 10);
    return Area{static_cast<int16_t>(numbers[0]), static_cast<int16_t>(numbers[1]),
                static_cast<uint16_t>(numbers[2]), static_cast<uint16_t>(numbers[3])};
}

void print(const char *text)
{
    std::puts(text);
    (void)std::fflush(stdout);
}

void watch(xcb_connection_t *server, xcb_window_t root, const Area &area)
{
    std::string before = pixels(server, root, area);
    print("ready");
    while (!before.empty()) {
        std::this_thread::sleep_for(1ms);
        std::string now = pixels(server, root, area);
        const auto time = std::chrono::steady_clock::now().time_since_epoch();
        if (now != before)
            print(std::to_string(std::chrono::nanoseconds(time).count()).c_str());
        before = std::move(now);
    }
}

} // namespace

int main(int argc, char **argv)
{
    const auto area = areaFrom(argc, argv);
    xcb_connection_t *server = xcb_connect(nullptr, nullptr);
    if (!area || xcb_connection_has_error(server) != 0)
        return EXIT_FAILURE;
    watch(server, xcb_setup_roots_iterator(xcb_get_setup(server)).data->root, *area);
    return EXIT_FAILURE;
}
