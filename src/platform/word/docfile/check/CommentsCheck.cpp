#include "platform/word/docfile/check/Checks.h"
#include "platform/word/docfile/document/Remarks.h"
#include "platform/word/docfile/format/Plc.h"
#include "platform/word/docfile/format/Sttb.h"

#include <unordered_set>

namespace qvnd::word {

namespace {

constexpr std::uint32_t noTag = 0xFFFFFFFF;

// How many names of authors there are; what lies behind the last whole one is told.
std::size_t countAuthors(ByteView names, Findings& findings) {
    std::size_t count = 0;
    LittleEndianReader reader(names, "GrpXstAtnOwners");
    while (reader.remaining() >= 2) {
        const std::size_t bytes = std::size_t{2} * reader.u16();
        if (bytes > reader.remaining()) {
            break;
        }
        reader.skip(bytes);
        ++count;
    }
    if (!reader.atEnd()) {
        findings.add("comment.authors", u"批注作者的名单不完整");
    }
    return count;
}

std::unordered_set<std::uint32_t> tagsOf(ByteView table, Findings& findings) {
    constexpr std::size_t tagAt = 2; // in an ATNBE, behind bmc
    std::unordered_set<std::uint32_t> tags;
    for (const Sttb::Entry& range : decodeSttb(table).table.entries) {
        if (range.extra.size() < tagAt + 4) {
            continue; // told with the count of the ranges
        }
        LittleEndianReader reader(range.extra, "ATNBE");
        reader.skip(tagAt);
        const std::uint32_t tag = reader.u32();
        if (!tags.insert(tag).second) {
            findings.add("comment.tag", u"批注范围的标记 " + digits(tag) + u" 用了两次");
        }
    }
    return tags;
}

// ATRDPre10, [MS-DOC] 2.9.7.
void checkComment(ByteView atrd, const std::u16string& where, std::size_t authors,
                  const std::unordered_set<std::uint32_t>& tags, Findings& findings) {
    constexpr std::size_t initialsRoom = 9;
    LittleEndianReader reader(atrd, "ATRDPre10");
    if (reader.u16() > initialsRoom) {
        findings.add("comment.initials", where + u"的作者缩写多于 9 个字符");
    }
    reader.skip(2 * initialsRoom);
    const std::size_t author = reader.u16();
    if (author >= authors) {
        findings.add("comment.author",
                     where + u"的作者 " + digits(std::int64_t(author)) + u" 不存在");
    }
    reader.skip(4);
    const std::uint32_t tag = reader.u32();
    if (tag != noTag && !tags.contains(tag)) {
        findings.add("comment.tag", where + u"所指的范围 " + digits(tag) + u" 不存在");
    }
}

// Dates and answers, one element a comment, which files have since Word 2002 ([MS-DOC] 2.9.5).
void checkExtra(const Evidence& evidence, std::size_t comments, Findings& findings) {
    constexpr std::size_t atrdExtraSize = 18;
    const bool mayHave = evidence.fib.pairs.size() > static_cast<std::size_t>(FibPair::AtrdExtra);
    if (mayHave && evidence.at(FibPair::AtrdExtra).size() != comments * atrdExtraSize) {
        findings.add("comment.extra", u"批注日期的个数与批注的个数不同");
    }
}

} // namespace

void checkComments(const Evidence& evidence, Findings& findings) {
    const PositionTable& table = *factsOf(TextPart::comments).references;
    const Plc comments = decodePlc(evidence.at(table.pair), table.elementSize);
    if (comments.count() == 0) {
        return;
    }
    const std::size_t authors = countAuthors(evidence.at(FibPair::GrpXstAtnOwners), findings);
    const auto tags = tagsOf(evidence.at(FibPair::SttbfAtnBkmk), findings);
    for (std::size_t i = 0; i < comments.count(); ++i) {
        checkComment(comments.element(i), u"批注 " + digits(std::int64_t(i) + 1), authors, tags,
                     findings);
    }
    checkExtra(evidence, comments.count(), findings);
}

} // namespace qvnd::word
