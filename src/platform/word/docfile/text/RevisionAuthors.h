#pragma once

#include "platform/word/docfile/container/Bytes.h"
#include "platform/word/docfile/document/Remarks.h"

namespace qvnd::word {

// The authors of tracked changes (SttbfRMark, [MS-DOC] 2.9.291); an index is the operand of
// sprmCIbstRMark and its kin.
std::vector<std::u16string> decodeRevisionAuthors(ByteView sttbfRMark, Remarks& remarks);
// Empty for no authors.
Bytes encodeRevisionAuthors(const std::vector<std::u16string>& authors);

} // namespace qvnd::word
