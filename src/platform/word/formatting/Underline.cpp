#include "platform/word/formatting/Underline.h"

namespace qvnd::word {

Underline underlineOf(std::uint32_t kul) {
    using Kind = Underline::Kind;
    switch (kul) {
    case 0:
    case 5: // hidden
        return {};
    case 2:
        return {Kind::plain, false, true};
    case 3:
        return {Kind::twofold};
    case 4:
        return {Kind::dotted};
    case 6:
        return {Kind::plain, true};
    case 7:
        return {Kind::dashed};
    case 9:
        return {Kind::dotDash};
    case 10:
        return {Kind::dotDotDash};
    case 11:
        return {Kind::wavy};
    case 20:
        return {Kind::dotted, true};
    case 23:
        return {Kind::dashed, true};
    case 25:
        return {Kind::dotDash, true};
    case 26:
        return {Kind::dotDotDash, true};
    case 27:
        return {Kind::wavy, true};
    case 39:
        return {Kind::longDashed};
    case 43:
        return {Kind::twofoldWavy};
    case 55:
        return {Kind::longDashed, true};
    default:
        return {Kind::plain};
    }
}

} // namespace qvnd::word
