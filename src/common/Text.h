#pragma once

#include <QByteArrayView>
#include <QString>

namespace velq
{

/// The text of these bytes; null when they are not valid UTF-8. No bytes are the empty text.
QString decodedUtf8(QByteArrayView bytes);

/// How a text shows inside a message or a command line: an absent one (null) as "(null)".
QString shown(const QString &text);

/// The text with a blank for each character that would make it more than a line, or do things to a
/// terminal.
QString onOneLine(QString text);

} // namespace velq
