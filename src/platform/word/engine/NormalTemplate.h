#pragma once

#include "platform/word/docfile/document/DocumentContent.h"

namespace qvnd::word {

// An empty document as the Chinese word processor makes it: one A4 section with margins of 2.54
// and 3.17 cm, header and footer 1.5 and 1.75 cm from the edge, text in 宋体 / Times New Roman of
// 10.5 pt, justified, and the built-in styles under their Chinese names.
DocumentContent normalTemplate();

// Width of the text of that page, in twips.
inline constexpr int normalTextWidth = 11906 - 2 * 1797;

} // namespace qvnd::word
