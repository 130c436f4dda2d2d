#pragma once

#include <QImage>
#include <QList>
#include <QObject>

namespace velq
{

class Menu;

/// One way of being in a tray, from `show` to its destruction. Setting a value that it has already
/// costs nothing. Main thread.
class TrayPresence : public QObject
{
    Q_OBJECT

public:
    /// The same picture at several sizes, each square; none for an icon that is not seen but keeps
    /// its place.
    virtual void setImages(const QList<QImage> &images) = 0;
    virtual void setText(const QString &text) = 0;
    /// The menu for trays that draw it themselves. Not owned; null for none.
    virtual void setMenu(Menu *menu) = 0;
    virtual void show() = 0;

Q_SIGNALS:
    void clicked();
    void secondaryClicked();
};

} // namespace velq
