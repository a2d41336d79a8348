#pragma once

#include "platform/word/docfile/container/Bytes.h"
#include "platform/word/docfile/container/CompoundFile.h"

#include <string>

// The small streams that a document carries beside its own, [MS-OLEDS] 2.3.8 and [MS-OLEPS].
namespace qvnd::word {

// 00020906-0000-0000-C000-000000000046: documents of Word 97 and later.
inline constexpr ClassId wordDocumentClass{0x06, 0x09, 0x02, 0, 0, 0, 0, 0,
                                           0xC0, 0,    0,    0, 0, 0, 0, 0x46};

inline constexpr const char16_t* compObjName = u"\001CompObj";
inline constexpr const char16_t* summaryName = u"\005SummaryInformation";
inline constexpr const char16_t* documentSummaryName = u"\005DocumentSummaryInformation";

// What programs show of a file without opening it; an empty text is left out.
struct DocumentProperties {
    std::u16string title;
    std::u16string subject;
    std::u16string author;
};

Bytes encodeCompObj();
// Texts are UTF-8 there, and both streams have the customary 4096 bytes.
Bytes encodeSummary(const DocumentProperties& properties);
Bytes encodeDocumentSummary();

// Whether all property sets of the stream lie in it, and all values of a set in that set, so that
// it may be written into another file as it is ([MS-OLEPS] 2.21).
bool isPropertySetStream(ByteView stream);

} // namespace qvnd::word
