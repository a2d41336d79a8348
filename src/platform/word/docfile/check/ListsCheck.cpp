#include "platform/word/docfile/check/Checks.h"
#include "platform/word/docfile/container/FormatError.h"
#include "platform/word/docfile/document/Remarks.h"
#include "platform/word/docfile/format/NumberFormats.h"
#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/docfile/format/Sttb.h"

#include <algorithm>
#include <set>

namespace qvnd::word {

namespace {

constexpr std::size_t lstfSize = 28;
constexpr std::size_t lvlfSize = 28;
constexpr std::size_t lfoSize = 16;
constexpr std::size_t levelPlaces = 9;
constexpr std::size_t mostOverrides = 2046; // an operand of sprmPIlfo names no further ones

// Number text of a level: the places of numbers in it ascend, lie inside and name levels.
void checkNumberText(ByteView head, const std::u16string& text, const std::u16string& where,
                     Findings& findings) {
    constexpr std::size_t placesAt = 6; // rgbxchNums, counted from 1, 0 ends them
    unsigned before = 0;
    for (std::size_t i = 0; i < levelPlaces && head[placesAt + i] != 0; ++i) {
        const unsigned place = head[placesAt + i];
        if (place <= before || place > text.size() || text[place - 1] >= levelPlaces) {
            findings.add("list.text", where + u"：编号文字中的位置不对");
            return;
        }
        before = place;
    }
}

void checkForm(ByteView head, const std::u16string& where, Findings& findings) {
    constexpr std::size_t formatAt = 4;
    constexpr std::size_t followAt = 15;
    if (!isNumberFormatOfLists(head[formatAt])) {
        findings.add("list.form", where + u"：没有第 " + digits(head[formatAt]) + u" 种编号格式");
    }
    if (!isFollowedSoundly(head[followAt])) {
        findings.add("list.form", where + u"：编号之后的间隔不对");
    }
}

void noteBullet(ByteView characters, const std::u16string& where, Evidence& evidence) {
    constexpr unsigned isPicture = 1; // fPicBullet
    const auto kind = findSprm(characters, sprm::CPbiGrf);
    const auto picture = findSprm(characters, sprm::CPbiIBullet);
    if (kind && picture && (kind->operand[0] & isPicture) != 0) {
        evidence.pictureBullets.push_back(
            {where, LittleEndianReader(picture->operand, "sprmCPbiIBullet").u32()});
    }
}

void checkLevel(LittleEndianReader& reader, const std::u16string& where, Evidence& evidence,
                Findings& findings) {
    constexpr std::size_t characterSizeAt = 24;
    constexpr std::size_t paragraphSizeAt = 25;
    const ByteView head = reader.view(lvlfSize);
    checkForm(head, where, findings);
    checkPropertyList(reader.view(head[paragraphSizeAt]), ListPlace::paragraph, where, evidence,
                      findings);
    const ByteView characters = reader.view(head[characterSizeAt]);
    checkPropertyList(characters, ListPlace::characters, where, evidence, findings);
    noteBullet(characters, where, evidence);
    const std::size_t length = reader.u16();
    checkNumberText(head, reader.text(length), where, findings);
}

struct CheckedList {
    std::int32_t lsid = 0;
    std::size_t levels = 0;
};

// A style of paragraphs, or that of characters which belongs to one.
bool canBeLinked(StyleIndex istd, const Evidence& evidence) {
    const auto kind = istd < evidence.styles.size() ? evidence.styles[istd] : std::nullopt;
    return kind == StyleKind::paragraph || kind == StyleKind::character;
}

CheckedList readList(LittleEndianReader& reader, std::size_t index, const Evidence& evidence,
                     Findings& findings) {
    constexpr unsigned simple = 1;
    constexpr std::int32_t nothing = -1;
    CheckedList list;
    list.lsid = reader.i32();
    if (list.lsid == nothing) {
        findings.add("list.unique", u"列表定义 " + digits(std::int64_t(index)) + u" 没有标识");
    }
    reader.skip(4);
    for (std::size_t level = 0; level < levelPlaces; ++level) {
        const StyleIndex istd = reader.u16();
        if (istd != StyleDefinition::none && !canBeLinked(istd, evidence)) {
            findings.add("list.style", u"列表定义 " + digits(std::int64_t(index)) +
                                           u" 所连的样式 " + digits(istd) + u" 不存在或种类不对");
        }
    }
    list.levels = (reader.u8() & simple) != 0 ? 1 : levelPlaces;
    reader.skip(1);
    return list;
}

std::vector<CheckedList> checkDefinitions(Evidence& evidence, Findings& findings) {
    std::vector<CheckedList> lists;
    const FcLcb place = evidence.fib.at(FibPair::PlfLst);
    if (place.lcb == 0 || evidence.at(FibPair::PlfLst).empty()) {
        return lists;
    }
    // The levels lie behind the table's own bytes.
    LittleEndianReader reader(ByteView(evidence.table).subspan(place.fc), "PlfLst");
    const std::size_t count = reader.u16();
    constexpr std::size_t most = 0x7FFF; // the count is a signed number
    if (2 + count * lstfSize != place.lcb || count > most) {
        findings.add("list.size", u"列表定义表的长度与个数不符");
    }
    std::set<std::int32_t> ids;
    for (std::size_t i = 0; i < count; ++i) {
        lists.push_back(readList(reader, i, evidence, findings));
        if (!ids.insert(lists.back().lsid).second) {
            findings.add("list.unique", u"列表定义 " + digits(std::int64_t(i)) + u" 的标识重复");
        }
    }
    for (std::size_t i = 0; i < count; ++i) {
        for (std::size_t level = 0; level < lists[i].levels; ++level) {
            checkLevel(reader,
                       u"列表定义 " + digits(std::int64_t(i)) + u" 第 " +
                           digits(std::int64_t(level + 1)) + u" 级",
                       evidence, findings);
        }
    }
    return lists;
}

struct CheckedOverride {
    std::int32_t lsid = 0;
    std::size_t levels = 0;
};

void checkOverrideLevels(LittleEndianReader& reader, const CheckedOverride& entry,
                         const std::u16string& where, Evidence& evidence, Findings& findings) {
    constexpr std::uint32_t dataHead = 0xFFFFFFFF;
    constexpr std::uint32_t levelMask = 0xF;
    constexpr std::uint32_t formatted = 0x20;
    if (reader.u32() != dataHead) {
        findings.add("list.override", where + u"：级别设置的开头不对");
    }
    std::set<std::uint32_t> changed;
    for (std::size_t i = 0; i < entry.levels; ++i) {
        reader.skip(4);
        const std::uint32_t flags = reader.u32();
        if ((flags & levelMask) >= levelPlaces) {
            findings.add("list.override", where + u"：所改的级别不存在");
        } else if (!changed.insert(flags & levelMask).second) {
            findings.add("list.override", where + u"：一个级别改了两次");
        }
        if ((flags & formatted) != 0) {
            checkLevel(reader, where, evidence, findings);
        }
    }
}

void checkOverrides(Evidence& evidence, const std::vector<CheckedList>& lists, Findings& findings) {
    const ByteView bytes = evidence.at(FibPair::PlfLfo);
    if (bytes.empty()) {
        return;
    }
    LittleEndianReader reader(bytes, "PlfLfo");
    const std::size_t count = reader.u32();
    if (count > reader.remaining() / lfoSize) {
        findings.add("list.size", u"列表引用表的长度与个数不符");
        return;
    }
    if (count > mostOverrides) {
        findings.add("list.number",
                     u"列表引用 " + digits(std::int64_t(count)) + u" 个，最多 2046 个");
    }
    evidence.listOverrides = count;
    std::vector<CheckedOverride> entries;
    for (std::size_t i = 0; i < count; ++i) {
        CheckedOverride& entry = entries.emplace_back();
        entry.lsid = reader.i32();
        reader.skip(8);
        entry.levels = reader.u8();
        reader.skip(3);
        const bool known = std::any_of(lists.begin(), lists.end(), [&](const CheckedList& list) {
            return list.lsid == entry.lsid;
        });
        if (!known) {
            findings.add("list.lsid",
                         u"列表引用 " + digits(std::int64_t(i + 1)) + u" 的列表定义不存在");
        }
    }
    for (std::size_t i = 0; i < count; ++i) {
        checkOverrideLevels(reader, entries[i], u"列表引用 " + digits(std::int64_t(i + 1)),
                            evidence, findings);
    }
}

// Names, which LISTNUM fields use, belong to the definitions in order ([MS-DOC] 2.9.292).
void checkListNames(const Evidence& evidence, std::size_t lists, Findings& findings) {
    constexpr std::size_t longest = 255;
    const DecodedSttb names = decodeSttb(evidence.at(FibPair::SttbListNames));
    if (!names.complete) {
        findings.add("list.name", u"列表名称表不完整");
    }
    std::set<std::u16string> seen;
    for (std::size_t i = 0; i < std::min(lists, names.table.entries.size()); ++i) {
        const std::u16string& name = names.table.entries[i].text;
        if (!name.empty() && !seen.insert(name).second) {
            findings.add("list.name", u"列表名称“" + name + u"”重复");
        }
        if (name.size() > longest) {
            findings.add("list.name", u"列表定义 " + digits(std::int64_t(i)) + u" 的名称过长");
        }
    }
}

} // namespace

void checkLists(Evidence& evidence, Findings& findings) {
    std::vector<CheckedList> lists;
    try {
        lists = checkDefinitions(evidence, findings);
        checkOverrides(evidence, lists, findings);
        checkListNames(evidence, lists.size(), findings);
    } catch (const FormatError&) {
        findings.add("list.parse", u"列表的表不完整");
    }
}

} // namespace qvnd::word
