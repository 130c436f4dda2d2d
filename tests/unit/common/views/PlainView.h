#pragma once

#include <QColor>
#include <QImage>
#include <QPainter>
#include <QWidget>

namespace velq
{

/// A widget that draws itself in one colour.
class PlainView : public QWidget
{
public:
    explicit PlainView(QColor color, QWidget *parent = nullptr)
        : QWidget(parent)
        , m_color(color)
    {
    }

    /// Its pixels and those of its children, drawn anew.
    QImage drawn() { return grab().toImage().convertToFormat(QImage::Format_ARGB32); }

protected:
    void paintEvent(QPaintEvent *) override { QPainter(this).fillRect(rect(), m_color); }

private:
    QColor m_color;
};

/// How many pixels of the image have the colour.
inline int count(const QImage &image, QColor color)
{
    int found = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            found += image.pixel(x, y) == color.rgba() ? 1 : 0;
    return found;
}

} // namespace velq
