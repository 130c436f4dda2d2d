#pragma once

#include "monitor/PopUpButton.h"

namespace velq
{

/// A button that opens the same menu with either mouse button.
class CustomeButton : public PopUpButton
{
    Q_OBJECT

public:
    using PopUpButton::PopUpButton;

    void rightMouseDown() override;
};

} // namespace velq
