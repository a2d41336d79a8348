#include "platform/word/layout/Strips.h"

#include <algorithm>

namespace qvnd::layout {

double gapBetween(const Strip& above, const Strip& below, bool addsSpaces) {
    const bool oneStyle = above.style == below.style && above.paragraph != below.paragraph;
    const double after = above.contextual && oneStyle ? 0 : above.after;
    const double before = below.contextual && oneStyle ? 0 : below.before;
    return addsSpaces ? after + before : std::max(after, before);
}

double heightOf(const Strips& strips, bool addsSpaces) {
    double height = 0;
    for (std::size_t i = 0; i < strips.size(); ++i) {
        height += i > 0 ? gapBetween(strips[i - 1], strips[i], addsSpaces) : strips[i].before;
        height += strips[i].height;
    }
    return height + (strips.empty() ? 0 : strips.back().after);
}

} // namespace qvnd::layout
