#include "platform/word/docfile/check/Checks.h"
#include "platform/word/docfile/document/Remarks.h"
#include "platform/word/docfile/format/Plc.h"
#include "platform/word/docfile/format/Sttb.h"

#include <algorithm>
#include <cstdint>
#include <set>
#include <utility>
#include <vector>

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

// Bookmarks, or what comments speak of: the table of names or tags, that of the beginnings, that of
// the ends.
struct RangeTables {
    Sttb names;
    Plc starts;
    Plc ends;
};

// How a kind of ranges is told, and its rules.
struct RangeKind {
    const char16_t* name = nullptr;
    const char16_t* firstTable = nullptr; // what the first table holds
    const char* countRule = nullptr;
    const char* endRule = nullptr;
    const char* orderRule = nullptr;
    std::size_t most = 0;
};

// More bookmarks keep Word from opening the file (Microsoft's notes on ISO/IEC 29500, 2.1.360).
constexpr RangeKind bookmarkKind{u"书签",        u"名称",          "bookmark.count",
                                 "bookmark.end", "bookmark.order", 16380};
// [MS-DOC] 2.9.277.
constexpr RangeKind commentRangeKind{
    u"批注范围", u"标记", "bookmark.comments", "bookmark.comments", "bookmark.comments", 0x3FFB};

RangeTables readRanges(const RangeKind& kind, ByteView names, ByteView starts, ByteView ends,
                       Findings& findings) {
    DecodedSttb decoded = decodeSttb(names);
    RangeTables tables{std::move(decoded.table), decodePlc(starts, 4), decodePlc(ends, 0)};
    const auto number = [](std::size_t count) { return digits(std::int64_t(count)); };
    const std::size_t count = tables.names.entries.size();
    if (!decoded.complete || tables.starts.count() != count || tables.ends.count() != count) {
        findings.add(kind.countRule, std::u16string(kind.name) + u"的" + kind.firstTable + u" " +
                                         number(count) + u" 个，开始 " +
                                         number(tables.starts.count()) + u" 个，结束 " +
                                         number(tables.ends.count()) + u" 个");
    }
    if (count > kind.most) {
        findings.add("bookmark.number", std::u16string(kind.name) + u" " + number(count) +
                                            u" 个，最多 " + number(kind.most) + u" 个");
    }
    return tables;
}

// Where each text begins: the main story, each note, header, comment and text of a shape; at last
// where all text ends, with the marks that may close it.
std::vector<Cp> beginsOfTexts(const Evidence& evidence) {
    std::vector<Cp> begins;
    for (const TextPartFacts& facts : textParts) {
        const Cp begin = evidence.partBegin(facts.part);
        const Cp length = lengthOf(facts.part, evidence.fib.ccp);
        begins.push_back(begin);
        if (!facts.texts) {
            continue;
        }
        const Plc texts = decodePlc(evidence.at(facts.texts->pair), facts.texts->elementSize);
        for (const std::uint32_t position : texts.positions) {
            begins.push_back(begin + std::min(position, length));
        }
    }
    constexpr std::uint64_t closing = 2;
    const std::uint64_t end = evidence.fib.ccp.text + evidence.fib.ccp.sideTotal() + closing;
    begins.push_back(static_cast<Cp>(std::min<std::uint64_t>(end, 0xFFFFFFFF)));
    std::sort(begins.begin(), begins.end());
    return begins;
}

// What ends behind all text breaks a rule of its own.
bool isInOneText(const std::vector<Cp>& begins, Cp start, Cp end) {
    const auto next = std::upper_bound(begins.begin(), begins.end(), start);
    return next == begins.end() || end <= *next || end > begins.back();
}

void checkPlaces(const RangeKind& kind, const RangeTables& tables, const std::vector<Cp>& begins,
                 Findings& findings) {
    std::set<std::size_t> used;
    for (std::size_t i = 0; i < tables.starts.count(); ++i) {
        const std::size_t end = LittleEndianReader(tables.starts.element(i), "FBKF").u16();
        const bool isNamed =
            i < tables.names.entries.size() && !tables.names.entries[i].text.empty();
        const std::u16string where =
            kind.name + (isNamed ? u"“" + tables.names.entries[i].text + u"”"
                                 : u" " + digits(std::int64_t(i)) + u" ");
        if (end >= tables.ends.count() || !used.insert(end).second) {
            findings.add(kind.endRule, where + u"没有自己的结束位置");
        } else if (tables.ends.positions[end] < tables.starts.positions[i]) {
            findings.add(kind.orderRule, where + u"的结束在开始之前");
        } else if (!isInOneText(begins, tables.starts.positions[i], tables.ends.positions[end])) {
            findings.add("bookmark.text", where + u"的开始和结束不在同一段独立的文字中");
        }
    }
}

// How many characters the pictures of bullets have ([MS-DOC] 2.6.1 sprmCPbiIBullet).
std::size_t bulletPictures(const RangeTables& tables) {
    const Plc& starts = tables.starts;
    const Plc& ends = tables.ends;
    for (std::size_t i = 0; i < starts.count() && i < tables.names.entries.size(); ++i) {
        const std::size_t end = LittleEndianReader(starts.element(i), "FBKF").u16();
        if (tables.names.entries[i].text == u"_PictureBullets" && end < ends.count()) {
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

} // namespace

void checkBookmarks(const Evidence& evidence, Findings& findings) {
    const RangeTables tables =
        readRanges(bookmarkKind, evidence.at(FibPair::SttbfBkmk), evidence.at(FibPair::PlcfBkf),
                   evidence.at(FibPair::PlcfBkl), findings);
    checkNames(tables.names, findings);
    const std::vector<Cp> begins = beginsOfTexts(evidence);
    checkPlaces(bookmarkKind, tables, begins, findings);
    checkBullets(bulletPictures(tables), evidence, findings);
    checkPlaces(commentRangeKind,
                readRanges(commentRangeKind, evidence.at(FibPair::SttbfAtnBkmk),
                           evidence.at(FibPair::PlcfAtnBkf), evidence.at(FibPair::PlcfAtnBkl),
                           findings),
                begins, findings);
}

} // namespace qvnd::word
