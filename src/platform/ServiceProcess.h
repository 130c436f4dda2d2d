#pragma once

namespace velq
{

/// Whether the platform's service manager started this very process, and may start it again when it
/// ends. Any thread.
bool startedByServiceManager();

} // namespace velq
