#include "monitor/tray/XEmbedIcon.h"

#include <QGuiApplication>

namespace velq
{

namespace
{

// Qt does not show a tray icon that has no picture.
QPixmap nothingSeen()
{
    QPixmap pixmap(1, 1);
    pixmap.fill(Qt::transparent);
    return pixmap;
}

QIcon iconOf(const QList<QImage> &images)
{
    QIcon icon;
    for (const QImage &image : images)
        icon.addPixmap(QPixmap::fromImage(image));
    if (images.isEmpty())
        icon.addPixmap(nothingSeen());
    return icon;
}

} // namespace

XEmbedIcon::XEmbedIcon()
{
    m_icon.setIcon(iconOf({}));
    connect(&m_icon, &QSystemTrayIcon::activated, this, &XEmbedIcon::onActivated);
}

bool XEmbedIcon::isPossible()
{
    return QGuiApplication::platformName() == QLatin1String("xcb");
}

void XEmbedIcon::setImages(const QList<QImage> &images)
{
    if (m_images == images)
        return;
    m_images = images;
    m_icon.setIcon(iconOf(images));
}

void XEmbedIcon::setText(const QString &text)
{
    if (m_icon.toolTip() != text)
        m_icon.setToolTip(text);
}

// The tray has no menus; the item's button opens one as a window.
void XEmbedIcon::setMenu(Menu *)
{
}

void XEmbedIcon::show()
{
    m_icon.show();
}

void XEmbedIcon::onActivated(QSystemTrayIcon::ActivationReason reason)
{
    if (reason == QSystemTrayIcon::Trigger)
        Q_EMIT clicked();
    else if (reason == QSystemTrayIcon::Context)
        Q_EMIT secondaryClicked();
}

} // namespace velq
