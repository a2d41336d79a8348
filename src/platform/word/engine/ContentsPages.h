#pragma once

#include "platform/word/engine/StoryEditor.h"
#include "platform/word/engine/WorkingDocument.h"
#include "platform/word/layout/PageNumberSource.h"

namespace qvnd::word {

// Brings the page numbers in every contents of the document up to date; the insertion point stays
// where it is in the text. Without a contents nobody is asked.
void updateContentsPages(WorkingDocument& document, Insertion& insertion, PageNumberSource& pages);

} // namespace qvnd::word
