#pragma once

#include <QRectF>

class QFont;
class QString;

namespace velq
{

/// The rectangle that the text takes in lines no wider than `width` (logical pixels), from the
/// upper left corner of its first line at (0, 0); the font's leading counts. A word that is wider
/// is broken. No wrapping for a width of 0 or less, and for the null text no rectangle. Main
/// thread, with a QGuiApplication.
QRectF boundingRectOfText(const QString &text, const QFont &font, float width);

} // namespace velq
