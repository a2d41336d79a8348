#include "platform/word/layout/SectionShape.h"

#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/docfile/formatting/SectionPaper.h"

#include <algorithm>

namespace qvnd::word {

namespace {

constexpr SprmOpcode columnCount = 0x500B;   // sprmSCcolumns, one less than the columns
constexpr SprmOpcode columnSpacing = 0x900C; // sprmSDxaColumns

int wordAt(ByteView list, SprmOpcode opcode, int otherwise) {
    const auto sprm = findSprm(list, opcode);
    return sprm ? static_cast<std::int16_t>(sprm->operand[0] | (sprm->operand[1] << 8)) : otherwise;
}

} // namespace

bool startsPage(ByteView list) {
    const auto kind = findSprm(list, sprm::SBkc);
    return !kind || kind->operand[0] != 0;
}

SectionShape sectionShape(ByteView list, bool gutterOnTop) {
    constexpr int leastText = 720;
    SectionShape shape;
    const SectionPaper paper = sectionPaper(list, gutterOnTop);
    shape.page.columns = std::clamp(wordAt(list, columnCount, 0) + 1, 1, 44);
    const int gaps = (shape.page.columns - 1) * wordAt(list, columnSpacing, 720);
    shape.page.textWidth = std::max(leastText, (paper.textWidth() - gaps) / shape.page.columns);
    shape.page.textHeight = std::max(leastText, paper.textHeight());
    shape.startsPage = startsPage(list);
    return shape;
}

} // namespace qvnd::word
