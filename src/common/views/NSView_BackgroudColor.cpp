#include "common/views/NSView_BackgroudColor.h"

#include <QCoreApplication>
#include <QEvent>
#include <QLinearGradient>
#include <QPaintEvent>
#include <QPainter>
#include <QPointer>
#include <QVariant>
#include <QWidget>

namespace velq
{

namespace
{

constexpr auto colorKey = "backgroundColor";
constexpr auto gradientKey = "gradientColor";

void fill(QPainter &painter, const QRect &dirty, const QColor &color)
{
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.fillRect(dirty, color);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
}

void drawDownwards(QPainter &painter, const QRectF &bounds, const QGradientStops &stops)
{
    QLinearGradient gradient(bounds.topLeft(), bounds.bottomLeft());
    gradient.setStops(stops);
    painter.fillRect(bounds, gradient);
}

void drawAbove(QWidget &view, const QRect &dirty)
{
    QPainter painter(&view);
    if (const QColor color = getBackgroundColor(view); color.isValid())
        fill(painter, dirty, color);
    if (const QGradientStops stops = getGradientColor(view); !stops.isEmpty())
        drawDownwards(painter, view.rect(), stops);
}

bool hasDrawing(const QWidget &view)
{
    return getBackgroundColor(view).isValid() || !getGradientColor(view).isEmpty();
}

// Takes the paint events of all widgets; those of the marked ones it sends once more, so that the
// widget, and whoever filters its events, draws first. Only while its paint event is handled can a
// widget be drawn on.
class DrawingExchange : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject *receiver, QEvent *event) override
    {
        if (event->type() != QEvent::Paint || !receiver->isWidgetType())
            return false;
        auto &view = static_cast<QWidget &>(*receiver);
        // One widget may draw another while it is drawn itself, hence a list.
        if (m_sent.contains(event) || !hasDrawing(view))
            return false;
        draw(view, static_cast<QPaintEvent &>(*event));
        return true;
    }

private:
    void draw(QWidget &view, QPaintEvent &event)
    {
        const QPointer<QWidget> alive(&view);
        m_sent.append(&event);
        QCoreApplication::sendEvent(&view, &event);
        m_sent.removeOne(&event);
        if (alive != nullptr)
            drawAbove(view, event.rect());
    }

    QList<const QEvent *> m_sent;
};

void exchangeDrawing()
{
    auto *const application = QCoreApplication::instance();
    application->installEventFilter(new DrawingExchange(application));
}

} // namespace

void setBackgroundColor(QWidget &view, const QColor &color)
{
    view.setProperty(colorKey, color.isValid() ? QVariant(color) : QVariant());
    [[maybe_unused]] static const bool once = (exchangeDrawing(), true);
    view.update();
}

void setGradientColor(QWidget &view, const QGradientStops &gradient)
{
    view.setProperty(gradientKey, gradient.isEmpty() ? QVariant() : QVariant::fromValue(gradient));
    view.update();
}

QColor getBackgroundColor(const QWidget &view)
{
    return view.property(colorKey).value<QColor>();
}

QGradientStops getGradientColor(const QWidget &view)
{
    return view.property(gradientKey).value<QGradientStops>();
}

} // namespace velq
