#include "monitor/tray/TrayItem.h"

#include "monitor/StatusItem.h"
#include "monitor/tray/StatusNotifierItem.h"
#include "monitor/tray/XEmbedIcon.h"

namespace velq
{

TrayItem::TrayItem(StatusItem *item)
    : QObject(item)
    , m_item(item)
{
    // Several properties that change in one go make one update.
    m_update.setSingleShot(true);
    m_update.setInterval(0);
    connect(&m_update, &QTimer::timeout, this, &TrayItem::update);
    const auto updateSoon = qOverload<>(&QTimer::start);
    connect(m_item, &StatusItem::textChanged, &m_update, updateSoon);
    connect(m_item, &StatusItem::viewChanged, this, &TrayItem::onViewChanged);
    connect(&m_watch, &StatusNotifierWatch::changed, this, &TrayItem::replacePresence);
}

void TrayItem::onViewChanged()
{
    if (!m_view.isNull()) {
        m_view->iconImage->disconnect(&m_update);
        m_view->statusImage->disconnect(&m_update);
        m_view->menButton->disconnect(this);
    }
    m_view = m_item->view();
    if (!m_view.isNull()) {
        const auto updateSoon = qOverload<>(&QTimer::start);
        connect(m_view->iconImage, &ImageView::imageChanged, &m_update, updateSoon);
        connect(m_view->statusImage, &ImageView::imageChanged, &m_update, updateSoon);
        connect(m_view->menButton, &PopUpButton::menuChanged, this, &TrayItem::onMenuChanged);
    }
    replacePresence();
}

void TrayItem::onMenuChanged()
{
    Menu *menu = m_view.isNull() ? nullptr : m_view->menButton->menu();
    m_popUp.setMenu(menu);
    if (m_presence != nullptr)
        m_presence->setMenu(menu);
}

void TrayItem::replacePresence()
{
    m_presence.reset();
    if (!m_view.isNull())
        m_presence = makePresence();
    onMenuChanged();
    if (m_presence == nullptr)
        return;
    takeClicks();
    update();
    m_presence->show();
}

std::unique_ptr<TrayPresence> TrayItem::makePresence() const
{
    if (!m_watch.hostIsThere().has_value())
        return nullptr;
    if (m_watch.hostIsThere().value())
        return std::make_unique<StatusNotifierItem>();
    if (XEmbedIcon::isPossible())
        return std::make_unique<XEmbedIcon>();
    return nullptr;
}

void TrayItem::takeClicks()
{
    connect(m_presence.get(), &TrayPresence::clicked, m_view->menButton, &PopUpButton::mouseDown);
    connect(m_presence.get(), &TrayPresence::secondaryClicked, m_view->menButton,
            &PopUpButton::rightMouseDown);
}

void TrayItem::update()
{
    if (m_presence == nullptr)
        return;
    m_presence->setImages(m_view.isNull() ? QList<QImage>() : m_renderer.images(*m_view));
    m_presence->setText(m_item->text());
}

} // namespace velq
