#pragma once

#include "platform/word/docfile/document/DocumentContent.h"

namespace qvnd::word {

// A read document as one under work, all of it. Where a damaged file names a font, a style, a list
// or anything else that it does not have, the name goes, so that what is saved is sound.
// Linear in the size of the document.
DocumentContent openedDocument(DocumentContent data);

} // namespace qvnd::word
