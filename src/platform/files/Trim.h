#pragma once

#include <QString>

namespace qvnd::files {

// The text without the blanks (U+0020) at both ends; any other white space stays.
QString Trim(const QString& text);

} // namespace qvnd::files
