#include "platform/word/docfile/check/Checks.h"
#include "platform/word/docfile/document/Remarks.h"
#include "platform/word/docfile/format/Plc.h"
#include "platform/word/docfile/format/SpecialCharacters.h"

namespace qvnd::word {

namespace {

constexpr std::size_t separators = 6;
constexpr std::size_t perSection = 6;

// Every story that is there ends in a paragraph mark.
void checkStories(const Plc& stories, const Evidence& evidence, Findings& findings) {
    const Cp from = evidence.partBegin(TextPart::headers);
    for (std::size_t i = 0; i + 1 < stories.count(); ++i) {
        const Cp begin = stories.positions[i];
        const Cp end = stories.positions[i + 1];
        const std::size_t last = std::size_t{from} + end - 1;
        const bool outside = end > begin && last >= evidence.text.size();
        if (outside || (end > begin && evidence.text[last] != special::paragraphMark)) {
            findings.add("header.mark",
                         u"第 " + digits(std::int64_t(i)) + u" 个页眉页脚没有以段落标记结束");
        }
    }
}

// A document without headers has no table, or one in which every story is empty.
void checkEmpty(const Plc& stories, Findings& findings) {
    for (std::size_t i = 0; i < stories.count(); ++i) {
        if (stories.positions[i] != 0) {
            findings.add("header.table", u"有页眉页脚的位置表，却没有页眉页脚的文字");
            return;
        }
    }
}

} // namespace

void checkHeaders(const Evidence& evidence, Findings& findings) {
    const ByteView bytes = evidence.at(FibPair::PlcfHdd);
    if (evidence.fib.ccp.headers == 0) {
        checkEmpty(decodePlc(bytes, 0), findings);
        return;
    }
    if (bytes.empty()) {
        findings.add("header.table", u"页眉页脚的文字没有位置表");
        return;
    }
    // Positions: one a story, one behind the last, one that closes the table.
    const Plc stories = decodePlc(bytes, 0);
    const std::size_t expected = separators + perSection * evidence.sectionEnds.size() + 1;
    if (stories.count() != expected) {
        findings.add("header.count", u"应有 " + digits(std::int64_t(expected - 1)) +
                                         u" 个页眉页脚的位置，实有 " +
                                         digits(std::int64_t(stories.count()) - 1) + u" 个");
    }
    if (!evidence.text.empty()) {
        checkStories(stories, evidence, findings);
    }
}

} // namespace qvnd::word
