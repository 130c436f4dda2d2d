#pragma once

#include "monitor/tray/IconPixmap.h"

#include <QDBusAbstractAdaptor>
#include <QDBusObjectPath>

namespace velq
{

class TrayPresence;

/// What a StatusNotifierItem answers on the bus. Names and signatures are the protocol's. A signal
/// goes out only for a value that is another than before. Main thread.
///
/// Protocol: freedesktop.org, StatusNotifierItem, "StatusNotifierItem".
class StatusNotifierItemAdaptor : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")
    Q_PROPERTY(QString Category READ category)
    Q_PROPERTY(QString Id READ id)
    Q_PROPERTY(QString Title READ title)
    Q_PROPERTY(QString Status READ status)
    Q_PROPERTY(int WindowId READ windowId)
    Q_PROPERTY(QString IconName READ iconName)
    Q_PROPERTY(QString IconThemePath READ iconName)
    Q_PROPERTY(QList<velq::IconPixmap> IconPixmap READ iconPixmap)
    Q_PROPERTY(QString IconAccessibleDesc READ iconAccessibleDesc)
    Q_PROPERTY(QString OverlayIconName READ iconName)
    Q_PROPERTY(QList<velq::IconPixmap> OverlayIconPixmap READ noPixmap)
    Q_PROPERTY(QString AttentionIconName READ iconName)
    Q_PROPERTY(QList<velq::IconPixmap> AttentionIconPixmap READ noPixmap)
    Q_PROPERTY(velq::ToolTip ToolTip READ toolTip)
    Q_PROPERTY(bool ItemIsMenu READ itemIsMenu)
    Q_PROPERTY(QDBusObjectPath Menu READ menu)

public:
    explicit StatusNotifierItemAdaptor(TrayPresence *presence);

    void setIcon(const QList<IconPixmap> &icon);
    void setText(const QString &text);

    QString category() const;
    QString id() const;
    /// The program and the text: hosts use it for lists and for screen readers.
    QString title() const;
    QString status() const;
    int windowId() const { return 0; }
    /// Empty, like the other names: the icon comes as pixels.
    QString iconName() const { return {}; }
    QList<velq::IconPixmap> iconPixmap() const { return m_icon; }
    QList<velq::IconPixmap> noPixmap() const { return {}; }
    QString iconAccessibleDesc() const { return m_text; }
    velq::ToolTip toolTip() const { return {{}, {}, m_text, {}}; }
    bool itemIsMenu() const { return true; }
    QDBusObjectPath menu() const;

public Q_SLOTS:
    void Activate(int x, int y);
    void ContextMenu(int x, int y);
    /// The middle button and the wheel mean nothing here.
    void SecondaryActivate(int x, int y);
    void Scroll(int delta, const QString &orientation);

Q_SIGNALS:
    void NewTitle();
    void NewIcon();
    void NewToolTip();
    void NewStatus(const QString &status);

private:
    TrayPresence *m_presence;
    QList<velq::IconPixmap> m_icon;
    QString m_text;
};

} // namespace velq
