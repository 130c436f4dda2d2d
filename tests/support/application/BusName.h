#pragma once

#include <memory>
#include <string>

struct sd_bus;

namespace velq::testing
{

/// The application on the session bus: owns its name and lets itself be activated. Without
/// a bus it does nothing.
class BusName
{
public:
    explicit BusName(const std::string &name);

    /// To be polled for input; -1 without a bus.
    int descriptor() const;
    void handleInput();

private:
    struct Close {
        void operator()(sd_bus *bus) const noexcept;
    };
    std::unique_ptr<sd_bus, Close> m_bus;
};

} // namespace velq::testing
