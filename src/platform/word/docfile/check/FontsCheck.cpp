#include "platform/word/docfile/check/Checks.h"
#include "platform/word/docfile/container/FormatError.h"
#include "platform/word/docfile/document/Remarks.h"
#include "platform/word/docfile/format/Sttb.h"

namespace qvnd::word {

namespace {

constexpr std::size_t namesAt = 39; // behind the fixed part of an FFN

void checkFont(ByteView record, std::size_t ftc, Findings& findings) {
    const bool named =
        record.size() >= namesAt + 4 && (record[namesAt] != 0 || record[namesAt + 1] != 0);
    const bool closed = named && record[record.size() - 1] == 0 && record[record.size() - 2] == 0;
    if (!closed) {
        findings.add("font.entry", u"字体表第 " + digits(std::int64_t(ftc)) + u" 项没有完整的名称");
    }
}

void countFonts(Evidence& evidence, Findings& findings) {
    LittleEndianReader reader(evidence.at(FibPair::SttbfFfn), "SttbfFfn");
    const std::size_t count = reader.u16();
    const std::size_t extra = reader.u16();
    for (std::size_t ftc = 0; ftc < count; ++ftc) {
        checkFont(reader.view(reader.u8()), ftc, findings);
        reader.skip(extra);
        ++evidence.fonts;
    }
}

} // namespace

void checkFonts(Evidence& evidence, Findings& findings) {
    try {
        countFonts(evidence, findings);
    } catch (const FormatError&) {
        findings.add("font.table", u"字体表不完整");
    }
    const DecodedSttb authors = decodeSttb(evidence.at(FibPair::SttbfRMark));
    evidence.authors = authors.table.entries.size();
    if (!authors.complete) {
        findings.add("author.table", u"修订者名单不完整");
    }
}

} // namespace qvnd::word
