#pragma once

#include "generate/driver/GenerationRun.h"
#include "generate/settings/SettingsRow.h"

namespace qvnd::generate {

// Empties the current page's header and footer, up to 5000 characters each, in a page view.
void clearHeaderAndFooter(GenerationRun& run);

// Types the texts of header and footer that a row of the shape of 页眉页脚表 wants. Their font is
// set before the insertion point goes into them. Without a row nothing is typed.
void typeHeaderAndFooter(GenerationRun& run, const SettingsRow& headerFooter);

// Puts page numbers into the footer, none on the first page: on the right when the footer's text
// stands in the middle, else in the middle.
void addPageNumbers(GenerationRun& run, const SettingsRow& headerFooter);

} // namespace qvnd::generate
