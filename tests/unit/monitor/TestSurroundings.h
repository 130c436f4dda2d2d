#pragma once

#include "monitor/StatusItem.h"
#include "platform/UserNotificationCenter.h"

#include <QList>

#include <functional>
#include <memory>

namespace velq::testing
{

/// A status bar that shows nothing and remembers what it was asked for.
struct RecordingStatusBar : StatusBar {
    std::shared_ptr<StatusItem> statusItemWithLength(double length) override
    {
        lengths.append(length);
        if (onItem)
            onItem();
        items.append(std::make_shared<StatusItem>());
        return items.last();
    }
    std::function<void()> onItem;
    QList<double> lengths;
    QList<std::shared_ptr<StatusItem>> items;
};

/// Keeps notifications to itself.
struct SilentCenter : UserNotificationCenter {
    void deliver(const UserNotification &) override { }
};

} // namespace velq::testing
