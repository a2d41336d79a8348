#pragma once

#include <QByteArray>
#include <QList>

namespace qvnd::history {

// The pages in which two images of a database differ, each with both contents, so that either image
// comes from the other. Compressed; empty when the images are equal. An empty image stands for a
// database that is not there.
QByteArray deltaOf(const QByteArray& before, const QByteArray& after);

enum class Direction { forward, back };

// The image at the other end of the delta. Error 75 when the bytes are no delta.
QByteArray applied(const QByteArray& delta, QByteArray image, Direction direction);

// One delta in place of several that follow each other, oldest first; empty when the last image is
// the first one again. Each is unpacked once. Error 75 as for `applied`.
QByteArray joinedDelta(const QList<QByteArray>& deltas);

} // namespace qvnd::history
