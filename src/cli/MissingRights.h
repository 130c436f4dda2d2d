#pragma once

namespace velq::cli
{

/// Says on standard error why commands as root have changed nothing, and what to do, where that is
/// because there is no root daemon, or none for this person. Nothing otherwise.
void explainMissingRights();

} // namespace velq::cli
