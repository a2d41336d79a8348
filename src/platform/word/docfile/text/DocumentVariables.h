#pragma once

#include "platform/word/docfile/container/Bytes.h"
#include "platform/word/docfile/document/DocumentContent.h"
#include "platform/word/docfile/document/Remarks.h"

#include <span>
#include <vector>

// Variables of a document: StwUser, [MS-DOC] 2.9.298.
namespace qvnd::word {

// Those with a name and a whole value; of two with one name the first counts. The signature of
// macros is none of them: no document of this program has any. What is missing is said in
// `remarks`.
std::vector<DocumentVariable> decodeVariables(ByteView stwUser, Remarks& remarks);

// No bytes where there are none.
Bytes encodeVariables(std::span<const DocumentVariable> variables);

} // namespace qvnd::word
