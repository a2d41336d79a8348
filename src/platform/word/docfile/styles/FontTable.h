#pragma once

#include "platform/word/docfile/document/DocumentTables.h"
#include "platform/word/docfile/document/Remarks.h"

namespace qvnd::word {

// The font table (SttbfFfn, [MS-DOC] 2.9.286): lcbSttbfFfn bytes at fcSttbfFfn. An index of the
// answer is the font index (ftc) of the file: a damaged entry becomes a plain font in its place
// and is named in `remarks`.
std::vector<FontEntry> decodeFonts(ByteView sttbfFfn, Remarks& remarks);
Bytes encodeFonts(const std::vector<FontEntry>& fonts);

// A font that no file described: variable pitch, TrueType, regular weight. A name with Chinese
// characters gets the GB character set and, where it is a common font, its Latin name as the
// alternate one. The name is cut to 64 characters.
FontEntry makeFont(std::u16string name);

} // namespace qvnd::word
