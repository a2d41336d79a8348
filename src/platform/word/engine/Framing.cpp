#include "platform/word/engine/Framing.h"

#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"

namespace qvnd::word {

namespace {

constexpr unsigned around = 2;       // sprmPWr: text flows around it
constexpr unsigned atLeast = 0x8000; // WHeightAbs.fMinHeight
constexpr unsigned marginAcross = 1; // PositionCodeOperand.pcHorz
constexpr unsigned pageAcross = 2;   // column: 0
constexpr unsigned pageDown = 1;     // pcVert; margin: 0
constexpr unsigned paragraphDown = 2;

unsigned positionCode(const FrameSpot& spot) {
    unsigned across = 0;
    if (spot.across != FrameSpot::Across::fromColumn) {
        across = spot.across == FrameSpot::Across::fromPage ? pageAcross : marginAcross;
    }
    unsigned down = 0;
    if (spot.down != FrameSpot::Down::fromMargin) {
        down = spot.down == FrameSpot::Down::fromPage ? pageDown : paragraphDown;
    }
    return (down << 4U) | (across << 6U);
}

// XAS_plusOne and YAS_plusOne: 0 and -4, -8, -12, -16, -20 are no distances but names of places.
unsigned distance(int twips) {
    const int stored = twips + 1;
    const bool isName = stored <= 0 && stored >= -20 && stored % 4 == 0;
    return static_cast<std::uint16_t>(isName ? stored + 1 : stored);
}

} // namespace

void putInFrame(Story& text, const FrameSpot& spot, PropertyLists& lists) {
    for (ParagraphRun& paragraph : text.paragraphs) {
        Bytes list = withSprm8(lists[paragraph.properties], sprm::PPc, positionCode(spot));
        list = withSprm8(list, sprm::PWr, around);
        list = withSprm16(list, sprm::PDxaAbs, distance(spot.left));
        list = withSprm16(list, sprm::PDyaAbs, distance(spot.top));
        list = withSprm16(list, sprm::PDxaWidth, static_cast<unsigned>(spot.width));
        list = withSprm16(list, sprm::PWHeightAbs, atLeast | static_cast<unsigned>(spot.height));
        paragraph.properties = lists.intern(list);
    }
}

} // namespace qvnd::word
