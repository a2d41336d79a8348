#pragma once

#include <QString>

namespace qvnd::preview {

// Whether a font of that name has pictures where other fonts have letters (Symbol, Wingdings, ...).
bool isSymbolFont(const QString& font);

// The Unicode character that shows what a character of such a font shows; a bullet for one that
// has no counterpart. `code`: as the font has it, with or without 0xF000.
QChar symbolAsText(char16_t code, const QString& font);

} // namespace qvnd::preview
