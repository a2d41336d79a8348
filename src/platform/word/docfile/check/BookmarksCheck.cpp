#include "platform/word/docfile/check/Checks.h"
#include "platform/word/docfile/document/Remarks.h"
#include "platform/word/docfile/format/Plc.h"
#include "platform/word/docfile/format/Sttb.h"

#include <algorithm>
#include <set>

namespace qvnd::word {

namespace {

// Names are compared without regard to the case of Latin letters.
std::u16string folded(std::u16string name) {
    for (char16_t& c : name) {
        c = c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 32) : c;
    }
    return name;
}

void checkNames(const Sttb& names, Findings& findings) {
    constexpr std::size_t longest = 40;
    std::set<std::u16string> seen;
    for (const Sttb::Entry& entry : names.entries) {
        if (!seen.insert(folded(entry.text)).second) {
            findings.add("bookmark.unique", u"书签“" + entry.text + u"”重复");
        }
        if (entry.text.empty() || entry.text.size() > longest) {
            findings.add("bookmark.name", u"书签“" + entry.text + u"”的名称过长或为空");
        }
    }
}

void checkPlaces(const Sttb& names, const Plc& starts, const Plc& ends, Findings& findings) {
    std::set<std::size_t> used;
    for (std::size_t i = 0; i < starts.count() && i < names.entries.size(); ++i) {
        LittleEndianReader fbkf(starts.element(i), "FBKF");
        const std::size_t end = fbkf.u16();
        const std::u16string where = u"书签“" + names.entries[i].text + u"”";
        if (end >= ends.count() || !used.insert(end).second) {
            findings.add("bookmark.end", where + u"没有自己的结束位置");
        } else if (ends.positions[end] < starts.positions[i]) {
            findings.add("bookmark.order", where + u"的结束在开始之前");
        }
    }
}

// How many characters the pictures of bullets have ([MS-DOC] 2.6.1 sprmCPbiIBullet).
std::size_t bulletPictures(const Sttb& names, const Plc& starts, const Plc& ends) {
    for (std::size_t i = 0; i < starts.count() && i < names.entries.size(); ++i) {
        const std::size_t end = LittleEndianReader(starts.element(i), "FBKF").u16();
        if (names.entries[i].text == u"_PictureBullets" && end < ends.count()) {
            return ends.positions[end] - std::min(starts.positions[i], ends.positions[end]);
        }
    }
    return 0;
}

void checkBullets(std::size_t pictures, const Evidence& evidence, Findings& findings) {
    for (const PictureBullet& bullet : evidence.pictureBullets) {
        if (bullet.picture >= pictures) {
            findings.add("list.bullet",
                         bullet.where + u"：项目符号的图片 " + digits(bullet.picture) + u" 不存在");
        }
    }
}

// [MS-DOC] 2.9.277 for the ranges of comments; more bookmarks keep Word from opening the file.
void checkNumber(const char16_t* what, std::size_t count, std::size_t most, Findings& findings) {
    if (count > most) {
        findings.add("bookmark.number", std::u16string(what) + u" " + digits(std::int64_t(count)) +
                                            u" 个，最多 " + digits(std::int64_t(most)) + u" 个");
    }
}

// What comments speak of: tags, where each starts, where each ends.
void checkCommentRanges(const Evidence& evidence, Findings& findings) {
    constexpr std::size_t most = 0x3FFB;
    const DecodedSttb tags = decodeSttb(evidence.at(FibPair::SttbfAtnBkmk));
    const Plc starts = decodePlc(evidence.at(FibPair::PlcfAtnBkf), 4);
    const Plc ends = decodePlc(evidence.at(FibPair::PlcfAtnBkl), 0);
    const std::size_t count = tags.table.entries.size();
    if (!tags.complete || starts.count() != count || ends.count() != count) {
        findings.add("bookmark.comments", u"批注范围的标记、开始和结束个数不同");
    }
    checkNumber(u"批注范围", count, most, findings);
    std::set<std::size_t> used;
    for (std::size_t i = 0; i < starts.count(); ++i) {
        const std::size_t end = LittleEndianReader(starts.element(i), "FBKF").u16();
        if (end >= ends.count() || !used.insert(end).second) {
            findings.add("bookmark.comments", u"批注范围没有自己的结束位置");
        } else if (ends.positions[end] < starts.positions[i]) {
            findings.add("bookmark.comments", u"批注范围的结束在开始之前");
        }
    }
}

} // namespace

void checkBookmarks(const Evidence& evidence, Findings& findings) {
    constexpr std::size_t most = 16380;
    const DecodedSttb names = decodeSttb(evidence.at(FibPair::SttbfBkmk));
    const Plc starts = decodePlc(evidence.at(FibPair::PlcfBkf), 4);
    const Plc ends = decodePlc(evidence.at(FibPair::PlcfBkl), 0);
    const std::size_t count = names.table.entries.size();
    if (!names.complete || starts.count() != count || ends.count() != count) {
        findings.add("bookmark.count", u"书签的名称 " + digits(std::int64_t(count)) +
                                           u" 个，开始 " + digits(std::int64_t(starts.count())) +
                                           u" 个，结束 " + digits(std::int64_t(ends.count())) +
                                           u" 个");
    }
    checkNumber(u"书签", count, most, findings);
    checkNames(names.table, findings);
    checkPlaces(names.table, starts, ends, findings);
    checkBullets(bulletPictures(names.table, starts, ends), evidence, findings);
    checkCommentRanges(evidence, findings);
}

} // namespace qvnd::word
