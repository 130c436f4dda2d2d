#pragma once

namespace velq
{

/// Whether a window could be shown: the session names a display and that display answers. Asked
/// before the application is made, which would end the process where there is none.
bool displayIsAvailable();

} // namespace velq
