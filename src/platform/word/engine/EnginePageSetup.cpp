#include "platform/word/engine/EnginePageSetup.h"

#include "platform/word/docfile/Dop.h"
#include "platform/word/docfile/SprmCodes.h"
#include "platform/word/engine/EngineDocument.h"
#include "platform/word/engine/EngineErrors.h"

#include <cmath>

namespace qvnd::word {

void EnginePageSetup::setLength(SprmOpcode opcode, float points) {
    constexpr float widestPage = 1584; // points
    if (!(std::abs(points) <= widestPage)) {
        throw outOfRange();
    }
    constexpr float twipsPerPoint = 20;
    const auto operand = static_cast<std::uint16_t>(std::lround(points * twipsPerPoint));
    WorkingDocument& content = document_.change();
    PropertyLists& lists = content.tables().lists;
    DocumentSections& sections = content.sections();
    for (std::size_t i = 0; i < sections.count(); ++i) {
        const Bytes list = withSprm16(lists[sections.properties(i)], opcode, operand);
        sections.setProperties(i, lists.intern(list));
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
    writeDop(document_.change().settings(), dop::gutterAtTop, onTop ? 1 : 0);
}

} // namespace qvnd::word
