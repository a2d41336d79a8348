#pragma once

#include "platform/word/layout/StoryReader.h"

#include <cstddef>
#include <span>

namespace qvnd::layout {

// The places at which a justified line is stretched.
class ElasticPart {
public:
    // `hangs`: the last mark of the line stands beyond its right end.
    ElasticPart(std::span<const TextItem> line, bool hangs);

    // Whether the line is stretched behind this item.
    bool stretchesBehind(std::size_t item) const;
    std::size_t places() const;

private:
    std::span<const TextItem> line_;
    std::size_t from_ = 0;
    std::size_t end_ = 0;
};

} // namespace qvnd::layout
