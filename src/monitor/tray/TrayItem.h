#pragma once

#include "monitor/tray/PopUpMenu.h"
#include "monitor/tray/StatusNotifierWatch.h"
#include "monitor/tray/TrayPresence.h"
#include "monitor/tray/ViewRenderer.h"

#include <QTimer>

namespace velq
{

class StatusItem;

/// Brings one status item to the tray: picks the kind of presence that the tray understands, keeps
/// it like the item, and takes clicks back to the item's button. There is never more than one
/// presence. Main thread.
class TrayItem : public QObject
{
    Q_OBJECT

public:
    /// A child of `item`, and ends with it.
    explicit TrayItem(StatusItem *item);

private:
    void onViewChanged();
    void onMenuChanged();
    void replacePresence();
    std::unique_ptr<TrayPresence> makePresence() const;
    void takeClicks();
    void update();

    StatusItem *m_item;
    QPointer<StatusItemView> m_view;
    StatusNotifierWatch m_watch;
    ViewRenderer m_renderer;
    PopUpMenu m_popUp;
    std::unique_ptr<TrayPresence> m_presence;
    QTimer m_update;
};

} // namespace velq
