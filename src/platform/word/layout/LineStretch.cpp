#include "platform/word/layout/LineStretch.h"

#include "platform/word/layout/CharacterClasses.h"
#include "platform/word/layout/CharacterPlacement.h"

namespace qvnd::layout {

namespace {

// Nothing in front of a tab moves.
std::size_t firstElastic(std::span<const TextItem> line) {
    std::size_t first = 0;
    for (std::size_t i = 0; i < line.size(); ++i) {
        first = line[i].kind == TextItem::Kind::tab ? i + 1 : first;
    }
    return first;
}

// A break and the blanks in front of it take nothing of the line, and a hanging mark begins where
// it ends.
std::size_t elasticEnd(std::span<const TextItem> line, bool hangs) {
    std::size_t end = line.size();
    end -= end > 0 && endsLine(line[end - 1]) ? 1 : 0;
    while (end > 0 && isBlankItem(line[end - 1])) {
        --end;
    }
    return end - (hangs && end > 0 ? 1 : 0);
}

} // namespace

ElasticPart::ElasticPart(std::span<const TextItem> line, bool hangs)
    : line_(line), from_(firstElastic(line)), end_(elasticEnd(line, hangs)) {}

bool ElasticPart::stretchesBehind(std::size_t item) const {
    return item >= from_ && item + 1 < end_ && mayStretchBetween(line_[item], line_[item + 1]);
}

std::size_t ElasticPart::places() const {
    std::size_t count = 0;
    for (std::size_t i = from_; i < end_; ++i) {
        count += stretchesBehind(i) ? 1 : 0;
    }
    return count;
}

} // namespace qvnd::layout
