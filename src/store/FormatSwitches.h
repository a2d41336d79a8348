#pragma once

#include <QString>

namespace qvnd {

// The format switches that live in memory for the length of the run and reach no table.
struct FormatSwitches {
    // Headings numbered over all levels, as in 2.1.4.
    bool gMultLevelOn = false;
    // 0 keeps 前缀 and 后缀, 1 drops them, 2 drops them but puts gMultLevelText around the
    // number of level 1. Another value leaves each heading the number of the one before it.
    int gMultLevelMode = 0;
    // Mode 2: the first character goes before the number, the rest behind it.
    QString gMultLevelText;
    bool gBlankLineAroundTitle = false;
    // A document under a document gets a numbered plain paragraph in place of a heading.
    bool gChildDocAsNumber = false;
    // The format dialog has ended its load. Until then a selection in its lists of libraries shows
    // no library.
    bool gBidSetLoaded = false;
};

} // namespace qvnd
