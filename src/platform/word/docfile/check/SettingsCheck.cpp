#include "platform/word/docfile/check/Checks.h"
#include "platform/word/docfile/document/Remarks.h"
#include "platform/word/docfile/format/Sttb.h"

namespace qvnd::word {

void checkSettings(const Evidence& evidence, Findings& findings) {
    constexpr std::size_t dop97 = 500; // the least that a file of Word 97 or later has
    const std::size_t size = evidence.at(FibPair::Dop).size();
    if (size < dop97) {
        findings.add("settings.size",
                     u"文档设置只有 " + digits(std::int64_t(size)) + u" 字节，至少应有 500 字节");
    }
    constexpr std::size_t strings = 18; // [MS-DOC] 2.9.276
    const ByteView associated = evidence.at(FibPair::SttbfAssoc);
    const DecodedSttb decoded = decodeSttb(associated);
    if (!associated.empty() && (!decoded.complete || decoded.table.entries.size() != strings)) {
        findings.add("settings.strings", u"文档的关联文字不是 18 条");
    }
}

} // namespace qvnd::word
