#pragma once

#include <QWidget>

namespace velq
{

/// A row that names the service which has no address, behind a small picture. Main thread.
class IPErrorView : public QWidget
{
public:
    /// For the null name the row is empty.
    explicit IPErrorView(const QString &service, QWidget *parent = nullptr);

private:
    void addIcon(const QRect &frame);
    void addLabel(const QString &text, const QRect &frame);
};

} // namespace velq
