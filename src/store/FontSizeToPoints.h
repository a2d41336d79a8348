#pragma once

#include <QString>
#include <QStringList>

namespace qvnd::store {

// The points that a stored font size stands for: a number as it is ("10.5"), or a Chinese size
// name ("小四" is 12), outer blanks apart. A text that is neither, the empty one too, is 10; a
// number too wide to hold is 0. Raises nothing.
float FontSizeToPoints(const QString& text);

// The Chinese size names, from the largest to the smallest.
QStringList namedFontSizes();

} // namespace qvnd::store
