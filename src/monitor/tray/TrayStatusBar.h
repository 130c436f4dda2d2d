#pragma once

#include "monitor/StatusItem.h"

namespace velq
{

/// The tray of a desktop, whichever of the two kinds there is: a StatusNotifierItem where the
/// session bus has a watcher with a host, an XEmbed icon otherwise. A tray that comes later, goes,
/// or is restarted is followed.
///
/// Needs a QApplication, which must outlive the items. Main thread. Reports nothing: without any
/// tray the items are just not seen.
class TrayStatusBar : public StatusBar
{
public:
    /// `length` is the tray's own to say and not looked at.
    std::shared_ptr<StatusItem> statusItemWithLength(double length) override;
};

} // namespace velq
