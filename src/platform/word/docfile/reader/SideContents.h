#pragma once

#include "platform/word/docfile/document/DocumentData.h"
#include "platform/word/docfile/reader/OpenedDocument.h"

namespace qvnd::word {

// Counts what the document holds outside of the main story's own text.
SideContents countSideContents(const OpenedDocument& document);

} // namespace qvnd::word
