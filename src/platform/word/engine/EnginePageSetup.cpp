#include "platform/word/engine/EnginePageSetup.h"

#include "platform/word/docfile/format/Dop.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/docfile/formatting/SectionPaper.h"
#include "platform/word/engine/EngineDocument.h"
#include "platform/word/engine/EngineErrors.h"
#include "platform/word/formatting/PropertyValues.h"

#include <algorithm>
#include <cmath>

namespace qvnd::word {

namespace {

RunTimeError negativeLength() {
    return {4608, u"左右页边距、装订距离和页眉页脚的距离不能是负数，没有设置。"};
}

RunTimeError noRoom() { return {4608, u"页边距或装订距离太大，页面上放不下正文，没有设置。"}; }

// Only the top and bottom margin may be negative: the text then stays below header and footer
// whatever their height ([MS-DOC] sprmSDyaTop).
bool mayBeNegative(SprmOpcode opcode) {
    return opcode == sprm::SDyaTop || opcode == sprm::SDyaBottom;
}

// The smaller side of what the margins leave for text.
int roomForText(ByteView page, bool gutterOnTop) {
    const SectionPaper paper = sectionPaper(page, gutterOnTop);
    return std::min(paper.textWidth(), paper.textHeight());
}

bool leavesRoom(ByteView old, ByteView changed, bool gutterOnTop) {
    constexpr int leastRoom = 720; // twips
    const int room = roomForText(changed, gutterOnTop);
    return room >= leastRoom || room >= roomForText(old, gutterOnTop);
}

// The side of the gutter is set after its width, so a width that fits one of the sides counts.
bool leavesRoom(SprmOpcode opcode, ByteView old, ByteView changed, bool gutterOnTop) {
    return leavesRoom(old, changed, gutterOnTop) ||
           (opcode == sprm::SDzaGutter && leavesRoom(old, changed, !gutterOnTop));
}

} // namespace

void EnginePageSetup::setLength(SprmOpcode opcode, float points) {
    constexpr float widestPage = 1584; // points
    if (!(std::abs(points) <= widestPage)) {
        throw outOfRange();
    }
    if (points < 0 && !mayBeNegative(opcode)) {
        throw negativeLength();
    }
    const auto operand = static_cast<std::uint16_t>(std::lround(points * twipsPerPoint));
    WorkingDocument& content = document_.change();
    const bool onTop = gutterOnTop(content.settings());
    PropertyLists& lists = content.tables().lists;
    DocumentSections& sections = content.sections();
    bool fits = true;
    for (std::size_t i = 0; i < sections.count(); ++i) {
        const ByteView old = lists[sections.properties(i)];
        const Bytes list = withSprm16(old, opcode, operand);
        if (leavesRoom(opcode, old, list, onTop)) {
            sections.setProperties(i, lists.intern(list));
        } else {
            fits = false;
        }
    }
    if (!fits) {
        throw noRoom();
    }
}

void EnginePageSetup::setTopMargin(float points) { setLength(sprm::SDyaTop, points); }
void EnginePageSetup::setBottomMargin(float points) { setLength(sprm::SDyaBottom, points); }
void EnginePageSetup::setLeftMargin(float points) { setLength(sprm::SDxaLeft, points); }
void EnginePageSetup::setRightMargin(float points) { setLength(sprm::SDxaRight, points); }
void EnginePageSetup::setGutter(float points) { setLength(sprm::SDzaGutter, points); }
void EnginePageSetup::setHeaderDistance(float points) { setLength(sprm::SDyaHdrTop, points); }
void EnginePageSetup::setFooterDistance(float points) { setLength(sprm::SDyaHdrBottom, points); }

void EnginePageSetup::setGutterOnTop(bool onTop) {
    WorkingDocument& content = document_.change();
    writeDop(content.settings(), dop::gutterAtTop, onTop ? 1 : 0);
    PropertyLists& lists = content.tables().lists;
    DocumentSections& sections = content.sections();
    bool fits = true;
    for (std::size_t i = 0; i < sections.count(); ++i) {
        const ByteView page = lists[sections.properties(i)];
        const Bytes withoutGutter = withoutSprm(page, sprm::SDzaGutter);
        if (!leavesRoom(withoutGutter, page, onTop)) {
            sections.setProperties(i, lists.intern(withoutGutter));
            fits = false;
        }
    }
    if (!fits) {
        throw noRoom();
    }
}

} // namespace qvnd::word
