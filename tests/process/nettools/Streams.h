#pragma once

namespace velq::testing
{

/// For the preparation of a run (see ToolRun.h): its standard output has no room.
void intoFullDevice();

/// Likewise: nobody reads its standard output any more.
void intoClosedPipe();

} // namespace velq::testing
