#include "support/application/BusName.h"

#include "support/application/Contents.h"

#include <algorithm>

#include <systemd/sd-bus.h>

namespace velq::testing
{

namespace
{

int onActivate(sd_bus_message *message, void *, sd_bus_error *)
{
    tell("activated");
    return sd_bus_reply_method_return(message, "");
}

const sd_bus_vtable application[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_METHOD("Activate", "a{sv}", "", onActivate, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_VTABLE_END,
};

} // namespace

void BusName::Close::operator()(sd_bus *bus) const noexcept
{
    sd_bus_close_unref(bus);
}

BusName::BusName(const std::string &name)
{
    sd_bus *bus = nullptr;
    if (sd_bus_open_user(&bus) < 0)
        return;
    m_bus.reset(bus);
    std::string path = '/' + name;
    std::ranges::replace(path, '.', '/');
    sd_bus_add_object_vtable(bus, nullptr, path.c_str(), "org.freedesktop.Application", application,
                             nullptr);
    // A second instance lives without the name.
    (void)sd_bus_request_name(bus, name.c_str(), 0);
}

int BusName::descriptor() const
{
    return m_bus == nullptr ? -1 : sd_bus_get_fd(m_bus.get());
}

void BusName::handleInput()
{
    while (m_bus != nullptr && sd_bus_process(m_bus.get(), nullptr) > 0) { }
}

} // namespace velq::testing
