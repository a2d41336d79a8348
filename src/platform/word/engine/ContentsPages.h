#pragma once

#include "platform/word/engine/StoryEditor.h"
#include "platform/word/engine/WorkingDocument.h"
#include "platform/word/layout/PageNumberSource.h"

namespace qvnd::word {

// Updates the page numbers in every contents of the document. The insertion point keeps its place
// in the text. `pages` is not called when the document has no contents.
void updateContentsPages(WorkingDocument& document, Insertion& insertion, PageNumberSource& pages);

} // namespace qvnd::word
