#pragma once

#include <QByteArray>
#include <QString>

namespace qvnd::files {

// The text of a file written by anyone: with a byte-order mark UTF-8 or UTF-16, else UTF-8 when
// the bytes are valid UTF-8, else GBK (read as GB18030, which contains it). Malformed bytes
// become U+FFFD; nothing throws.
QString decodeText(const QByteArray& bytes);

// The bytes as GBK whatever they look like.
QString decodeGbk(const QByteArray& bytes);

// The text in GBK; what that lacks takes the four bytes of GB18030.
QByteArray encodeGbk(const QString& text);

} // namespace qvnd::files
