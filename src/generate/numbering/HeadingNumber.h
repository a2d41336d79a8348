#pragma once

#include "generate/numbering/NumberingTables.h"
#include "store/FormatSwitches.h"

#include <QString>

namespace qvnd::generate {

// Sets the text before the blank and the title of a heading from the number text of its node and
// the affixes of grid row `level` (0 to 9). Multi-level numbering goes by gMultLevelMode alone,
// plain numbering by 带该级标题; 中缀 plays no part. `HeadingNumberText` keeps its value under a
// gMultLevelMode outside 0 to 2.
void setHeadingNumberText(QString& HeadingNumberText, const FormatSwitches& switches,
                          const ChapterGrid& grid, int level, const QString& numberText);

} // namespace qvnd::generate
