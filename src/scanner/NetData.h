#pragma once

#include "scanner/GerenalData.h"
#include "scanner/NetStatus.h"

#include <QList>

#include <memory>

namespace velq
{

/// An issue item with the lines of its result.
class NetData : public GerenalData
{
public:
    using StatusList = QList<std::shared_ptr<NetStatus>>;

    /// What an item says of itself, whatever a scan finds.
    struct Texts {
        QString title;
        QString des;
        /// "icon" for the images icon_normal and icon_select; without such images the item goes
        /// without, too.
        QString image;
        QString ignoreKey;
        bool noShowIgnore = false;
    };

    static std::shared_ptr<NetData> make(const Texts &texts);

    /// Each step of a scan gives its item a fresh list.
    const StatusList &errorStatus() const { return m_errorStatus; }
    void setErrorStatus(const StatusList &list) { m_errorStatus = list; }
    void addStatus(const std::shared_ptr<NetStatus> &status) { m_errorStatus.append(status); }

    /// Makes the line the whole result: one issue when it tells of something abnormal, none when
    /// not, and a fresh list with nothing else in it.
    void setResult(const NetStatus &line);

    /// 0 while the item is ignored, for now or for good; what was set is kept.
    qint64 issue() const override { return ignore() || hasIgnore() ? 0 : GerenalData::issue(); }

private:
    StatusList m_errorStatus;
};

} // namespace velq
