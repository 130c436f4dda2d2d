#include "monitor/CustomeButton.h"

namespace velq
{

void CustomeButton::rightMouseDown()
{
    popUpAtMouse();
}

} // namespace velq
