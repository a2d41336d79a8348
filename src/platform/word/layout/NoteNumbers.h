#pragma once

#include "platform/word/layout/LayoutSource.h"

#include <string>
#include <vector>

// The numbers of footnotes and endnotes. Each section may count them in its own way; what it does
// not say is said by the document's settings.
namespace qvnd::layout {

// Whether footnotes are counted anew on each page, so that their numbers depend on the layout.
bool countsNotesByPage(const LayoutSource& source);

// By note: its number in its number format; empty for a note with a mark of its own. `sheets`: by
// note, the index of the page with its reference, as far as known. Footnotes whose pages are not
// known are counted on from page to page.
std::vector<std::u16string> noteMarks(const LayoutSource& source, const std::vector<int>& sheets);

} // namespace qvnd::layout
