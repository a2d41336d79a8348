#pragma once

#include <QString>

namespace qvnd::plans {

// What the name of a new plan may hold. The name is at once a folder, a table and the first part of
// every key, so ASCII punctuation would reach into paths, queries and keys.

// An ASCII letter or digit, or any character beyond ASCII: what may be typed.
bool mayBeTyped(QChar typed);

// The characters that a name which came in one piece must not hold, each once, in the order of
// their first places. A blank is none of them: it cannot be typed, but comes in by pasting.
QString illegalCharacters(const QString& name);

// `text` without those of its characters that `illegal` lists.
QString without(const QString& text, const QString& illegal);

// The text of the box that refuses these characters and names them.
QString illegalCharactersText(const QString& illegal);

} // namespace qvnd::plans
