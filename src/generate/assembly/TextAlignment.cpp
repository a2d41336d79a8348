#include "generate/assembly/TextAlignment.h"

namespace qvnd::generate {

std::optional<word::Alignment> alignmentOf(QStringView position) {
    if (position == u"左")
        return word::Alignment::left;
    if (position == u"中")
        return word::Alignment::center;
    if (position == u"右")
        return word::Alignment::right;
    return std::nullopt;
}

} // namespace qvnd::generate
