#pragma once

#include "monitor/tray/TrayPresence.h"

#include <QSystemTrayIcon>

namespace velq
{

/// An icon in the X11 tray of the freedesktop System Tray Protocol 0.3. Shows itself again in a
/// tray that comes later or was restarted.
///
/// Make one only while no StatusNotifierItem host exists: Qt decides with the first one, for the
/// whole process and for good, which of the two protocols its tray icons speak.
class XEmbedIcon : public TrayPresence
{
    Q_OBJECT

public:
    XEmbedIcon();

    /// Whether the display is an X server.
    static bool isPossible();

    void setImages(const QList<QImage> &images) override;
    void setText(const QString &text) override;
    void setMenu(Menu *menu) override;
    void show() override;

private:
    void onActivated(QSystemTrayIcon::ActivationReason reason);

    QSystemTrayIcon m_icon;
    QList<QImage> m_images;
};

} // namespace velq
