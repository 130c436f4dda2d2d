#pragma once

#include <QString>

#include <memory>

class QWidget;

namespace velq
{

/// One line of a result.
struct NetStatus {
    bool error = false; ///< the line tells of something abnormal
    QString name;
    QString des; ///< one sentence
    /// What the host shows under the line; null for most. Made and destroyed on the main thread.
    std::shared_ptr<QWidget> subErrorView;
};

} // namespace velq
