#pragma once

#include "platform/word/docfile/document/DocumentContent.h"

#include <string>
#include <vector>

namespace qvnd::word {

// A read document as one under work, all of it. Where a damaged file names a font, a style, a list
// or anything else that it does not have, the name goes, so that what is saved is sound.
// `*leftOut`, where given, gets a line in Chinese for each kind of thing that the file held and a
// saved document will not, the remarks of the reader first. Linear in the size of the document.
DocumentContent openedDocument(DocumentContent data,
                               std::vector<std::u16string>* leftOut = nullptr);

} // namespace qvnd::word
