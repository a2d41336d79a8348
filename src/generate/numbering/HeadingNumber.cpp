#include "generate/numbering/HeadingNumber.h"

namespace qvnd::generate {

namespace {

QString withAffixes(const ChapterGrid& grid, int level, const QString& numberText) {
    return grid.at(level, ChapterColumn::前缀) + numberText + grid.at(level, ChapterColumn::后缀);
}

} // namespace

void setHeadingNumberText(QString& HeadingNumberText, const FormatSwitches& switches,
                          const ChapterGrid& grid, int level, const QString& numberText) {
    if (!switches.gMultLevelOn) {
        const bool affixes = grid.at(level, ChapterColumn::带该级标题) == u"是";
        HeadingNumberText = affixes ? withAffixes(grid, level, numberText) : numberText;
        return;
    }
    switch (switches.gMultLevelMode) {
    case 0:
        HeadingNumberText = withAffixes(grid, level, numberText);
        break;
    case 1:
        HeadingNumberText = numberText;
        break;
    case 2:
        HeadingNumberText = level == 1 ? switches.gMultLevelText.left(1) + numberText +
                                             switches.gMultLevelText.mid(1)
                                       : numberText;
        break;
    default:
        break;
    }
}

} // namespace qvnd::generate
