#include "platform/word/layout/SectionShape.h"

#include "platform/word/docfile/Sprm.h"
#include "platform/word/docfile/SprmCodes.h"

#include <algorithm>
#include <cstdlib>

namespace qvnd::word {

namespace {

constexpr SprmOpcode columnCount = 0x500B;   // sprmSCcolumns, one less than the columns
constexpr SprmOpcode columnSpacing = 0x900C; // sprmSDxaColumns

int wordAt(ByteView list, SprmOpcode opcode, int otherwise) {
    const auto sprm = findSprm(list, opcode);
    return sprm ? static_cast<std::int16_t>(sprm->operand[0] | (sprm->operand[1] << 8)) : otherwise;
}

} // namespace

SectionShape sectionShape(ByteView list) {
    constexpr int leastText = 720;
    SectionShape shape;
    const int gutter = wordAt(list, sprm::SDzaGutter, 0);
    const int width = wordAt(list, sprm::SXaPage, 12240) - wordAt(list, sprm::SDxaLeft, 1800) -
                      wordAt(list, sprm::SDxaRight, 1800) - gutter;
    const int height = wordAt(list, sprm::SYaPage, 15840) -
                       std::abs(wordAt(list, sprm::SDyaTop, 1440)) -
                       std::abs(wordAt(list, sprm::SDyaBottom, 1440));
    shape.page.columns = std::clamp(wordAt(list, columnCount, 0) + 1, 1, 44);
    const int gaps = (shape.page.columns - 1) * wordAt(list, columnSpacing, 720);
    shape.page.textWidth = std::max(leastText, (width - gaps) / shape.page.columns);
    shape.page.textHeight = std::max(leastText, height);
    const auto kind = findSprm(list, sprm::SBkc);
    shape.startsPage = !kind || kind->operand[0] != 0;
    return shape;
}

} // namespace qvnd::word
