#pragma once

namespace velq
{

class NSAlert_Addition;

/// Where an alert is shown and answered: a window, a terminal, or nowhere. Main thread.
class AlertPanel
{
public:
    AlertPanel() = default;
    AlertPanel(const AlertPanel &) = delete;
    AlertPanel &operator=(const AlertPanel &) = delete;
    virtual ~AlertPanel() = default;

    /// Shows the alert and blocks until stopModal(). A click goes to
    /// NSAlert_Addition::buttonPressed(), with the button's tag; so does, as the first button's, an
    /// alert that nobody can answer.
    virtual void runModal(NSAlert_Addition &alert) = 0;
    /// Takes the alert from the screen; does nothing when none is shown.
    virtual void closeWindow() = 0;
    /// Lets runModal() return when the click has been dealt with.
    virtual void stopModal() = 0;
};

} // namespace velq
