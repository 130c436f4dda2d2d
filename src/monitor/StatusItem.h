#pragma once

#include "monitor/CustomeButton.h"
#include "monitor/ImageView.h"

namespace velq
{

/// The view inside a status item: two images, one above the other, and the button that takes the
/// clicks.
struct StatusItemView : QObject {
    using QObject::QObject;

    ImageView *iconImage = new ImageView(this);
    ImageView *statusImage = new ImageView(this);
    CustomeButton *menButton = new CustomeButton(this);
};

/// One item of the status bar, as what it shows; the status bar that made it shows it. Main thread.
class StatusItem : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Not owned; null before one is set.
    StatusItemView *view() const { return m_view; }
    void setView(StatusItemView *view);

    /// What the item says in words: its tool tip, its accessible name, its line in a terminal.
    QString text() const { return m_text; }
    void setText(const QString &text);

Q_SIGNALS:
    void viewChanged();
    void textChanged();

private:
    QPointer<StatusItemView> m_view;
    QString m_text;
};

/// Where status items are shown: a desktop's tray, or a terminal. Main thread.
class StatusBar
{
public:
    static constexpr double variableLength = -1;

    StatusBar() = default;
    StatusBar(const StatusBar &) = delete;
    StatusBar &operator=(const StatusBar &) = delete;
    virtual ~StatusBar() = default;

    /// A new item, shown from the moment it has a view until its last holder lets it go.
    virtual std::shared_ptr<StatusItem> statusItemWithLength(double length) = 0;
};

} // namespace velq
