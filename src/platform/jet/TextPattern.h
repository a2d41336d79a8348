#pragma once

#include <QStringView>

namespace qvnd::jet {

// Does the whole text match the pattern, without case? In a pattern * stands for any characters,
// ? for one, # for one digit, [a-cx] for one of a set, [!a-c] for one outside it; a character in
// brackets stands for itself. A bracket that is never closed matches nothing.
bool matchesPattern(QStringView text, QStringView pattern);

// Is every bracket of the pattern closed?
bool isPattern(QStringView pattern);

} // namespace qvnd::jet
