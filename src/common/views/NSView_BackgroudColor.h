#pragma once

#include <QBrush>
#include <QColor>

class QWidget;

namespace velq
{

/// A fill colour and a gradient for any widget, without subclassing it. Main thread.
///
/// They are drawn above what the widget itself draws and below its children, the gradient above the
/// fill. The values go with the widget, as its properties "backgroundColor" and "gradientColor".

/// Fills what is drawn anew of the widget; a translucent colour takes the place of what was there,
/// it is not blended with it. An invalid colour removes the fill. The process's first call, with
/// whatever colour, switches the drawing on for every widget.
void setBackgroundColor(QWidget &view, const QColor &color);
/// Blended over the whole widget from its upper edge (0) to its lower one (1); no stops remove it.
/// Draws nothing before the process's first setBackgroundColor().
void setGradientColor(QWidget &view, const QGradientStops &gradient);

/// Invalid when none is set.
QColor getBackgroundColor(const QWidget &view);
/// Empty when none is set.
QGradientStops getGradientColor(const QWidget &view);

} // namespace velq
