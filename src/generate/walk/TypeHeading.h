#pragma once

#include "generate/driver/GenerationRun.h"
#include "generate/walk/VisitedNode.h"

namespace qvnd::generate {

// Types the heading of a node whose number text is set: a page break where its level begins a
// page, then the text. It takes the style "标题 N", and font, size and alignment are set on that
// style, so the last node of a level decides for all of them. A document under a document that is
// numbered as such stays plain text.
void typeHeading(GenerationRun& run, const VisitedNode& visited);

} // namespace qvnd::generate
