#pragma once

namespace velq
{

/// Fills the places of standard input, output and error that the program was started without, so
/// that no file opened later takes one: reading there and writing there fail. First thing in
/// main().
void fillClosedStandardStreams();

} // namespace velq
