#include "platform/word/docfile/styles/ListTables.h"

#include "platform/word/docfile/container/FormatError.h"
#include "platform/word/docfile/format/Sttb.h"
#include "platform/word/docfile/styles/ListLevels.h"

#include <algorithm>
#include <unordered_set>

namespace qvnd::word {

namespace {

constexpr std::size_t lstfSize = 28;
constexpr std::size_t lfoSize = 16;
constexpr std::size_t mostLists = 2046; // sprmPIlfo names no further ones
constexpr std::uint8_t simpleList = 0x01;
constexpr std::uint32_t lfoDataHead = 0xFFFFFFFF; // cp of LFOData
constexpr std::uint32_t hasLevel = 0x20;          // fFormatting
constexpr std::uint32_t levelMask = 0x0F;         // iLvl

std::size_t levelsOf(const ListDefinition& definition) {
    return (definition.flags & simpleList) != 0 ? 1 : levelCount;
}

// The number of a list; no list may have the one that stands for none.
std::int32_t readNumber(LittleEndianReader& reader) {
    constexpr std::int32_t none = -1;
    const std::int32_t lsid = reader.i32();
    return lsid == none ? 0 : lsid;
}

ListDefinition readLstf(LittleEndianReader& reader) {
    ListDefinition definition;
    definition.lsid = readNumber(reader);
    definition.tplc = reader.i32();
    for (StyleIndex& style : definition.linkedStyles) {
        style = reader.u16();
    }
    definition.flags = reader.u8();
    definition.grfhic = reader.u8();
    return definition;
}

void writeLstf(LittleEndianWriter& writer, const ListDefinition& definition) {
    writer.u32(static_cast<std::uint32_t>(definition.lsid));
    writer.u32(static_cast<std::uint32_t>(definition.tplc));
    for (const StyleIndex style : definition.linkedStyles) {
        writer.u16(style);
    }
    const bool simple = definition.levels.size() == 1;
    writer.u8((definition.flags & ~unsigned{simpleList}) | (simple ? simpleList : 0U));
    writer.u8(definition.grfhic);
}

std::vector<ListDefinition> readLstfs(LittleEndianReader& reader, Remarks& remarks) {
    std::vector<ListDefinition> definitions;
    const std::size_t counted = reader.remaining() < 2 ? 0 : reader.u16();
    const std::size_t count = std::min(counted, reader.remaining() / lstfSize);
    if (count < counted) {
        remarks.push_back(u"有 " + digits(std::int64_t(counted - count)) +
                          u" 种编号已损坏，未读入，用它们的段落没有编号或项目符号");
    }
    for (std::size_t i = 0; i < count; ++i) {
        definitions.push_back(readLstf(reader));
    }
    return definitions;
}

void readLevels(LittleEndianReader& reader, std::vector<ListDefinition>& definitions,
                PropertyLists& lists, Remarks& remarks) {
    bool damaged = false;
    for (std::size_t i = 0; i < definitions.size(); ++i) {
        try {
            while (!damaged && definitions[i].levels.size() < levelsOf(definitions[i])) {
                definitions[i].levels.push_back(decodeListLevel(reader, lists));
            }
        } catch (const FormatError&) {
            damaged = true;
            remarks.push_back(u"有 " + digits(std::int64_t(definitions.size() - i)) +
                              u" 种编号的格式已损坏，用它们的段落没有编号或项目符号");
        }
        definitions[i].levels.resize(levelsOf(definitions[i]), levelWithoutNumber());
    }
}

ListOverride readLfo(LittleEndianReader& reader, std::size_t& levels) {
    ListOverride result;
    result.lsid = readNumber(reader);
    reader.skip(8);
    levels = reader.u8();
    result.fieldKind = reader.u8();
    result.grfhic = reader.u8();
    reader.skip(1);
    return result;
}

ListLevelOverride readLfoLevel(LittleEndianReader& reader, PropertyLists& lists) {
    ListLevelOverride result;
    result.startAt = reader.i32();
    result.flags = reader.u32();
    if ((result.flags & hasLevel) != 0) {
        result.level = decodeListLevel(reader, lists);
    }
    return result;
}

// Files exist with more than one head, and with none, before the levels of an override.
void skipHeads(LittleEndianReader& reader) {
    while (reader.remaining() >= 4) {
        const std::size_t at = reader.position();
        if (reader.u32() != lfoDataHead) {
            reader.seek(at);
            return;
        }
    }
}

// Whether the level exists and none before changes it: an override has at most one for each.
bool isNewLevel(const ListLevelOverride& level, const std::vector<ListLevelOverride>& before) {
    const std::uint32_t number = level.flags & levelMask;
    return number < levelCount &&
           std::none_of(before.begin(), before.end(), [&](const ListLevelOverride& other) {
               return (other.flags & levelMask) == number;
           });
}

void readLfoData(LittleEndianReader& reader, std::vector<ListOverride>& overrides,
                 const std::vector<std::size_t>& counts, PropertyLists& lists, Remarks& remarks) {
    for (std::size_t i = 0; i < overrides.size(); ++i) {
        try {
            if (counts[i] != 0) {
                skipHeads(reader);
            } else if (reader.remaining() >= 4) {
                reader.skip(4);
            }
            for (std::size_t level = 0; level < counts[i]; ++level) {
                ListLevelOverride read = readLfoLevel(reader, lists);
                if (isNewLevel(read, overrides[i].levels)) {
                    overrides[i].levels.push_back(std::move(read));
                }
            }
        } catch (const FormatError&) {
            remarks.push_back(u"有 " + digits(std::int64_t(overrides.size() - i)) +
                              u" 个列表的起始编号或格式已损坏，编号可能与原来不同");
            return;
        }
    }
}

void writeLfo(LittleEndianWriter& writer, const ListOverride& entry) {
    writer.u32(static_cast<std::uint32_t>(entry.lsid));
    writer.zeros(8);
    writer.u8(static_cast<unsigned>(entry.levels.size()));
    writer.u8(entry.fieldKind);
    writer.u8(entry.grfhic);
    writer.u8(0);
}

void writeLfoData(LittleEndianWriter& writer, const ListOverride& entry,
                  const PropertyLists& lists) {
    writer.u32(lfoDataHead);
    for (const ListLevelOverride& level : entry.levels) {
        writer.u32(static_cast<std::uint32_t>(level.startAt));
        writer.u32((level.flags & ~hasLevel) | (level.level ? hasLevel : 0));
        if (level.level) {
            encodeListLevel(writer, *level.level, lists);
        }
    }
}

} // namespace

std::vector<ListDefinition> decodeListDefinitions(ByteView plfLst, PropertyLists& lists,
                                                  Remarks& remarks) {
    LittleEndianReader reader(plfLst, "PlfLst");
    std::vector<ListDefinition> definitions = readLstfs(reader, remarks);
    readLevels(reader, definitions, lists, remarks);
    return definitions;
}

EncodedListDefinitions encodeListDefinitions(const std::vector<ListDefinition>& definitions,
                                             const PropertyLists& lists) {
    LittleEndianWriter writer;
    writer.u16(static_cast<unsigned>(definitions.size()));
    for (const ListDefinition& definition : definitions) {
        writeLstf(writer, definition);
    }
    EncodedListDefinitions result;
    result.size = writer.position();
    for (const ListDefinition& definition : definitions) {
        for (const ListLevel& level : definition.levels) {
            encodeListLevel(writer, level, lists);
        }
    }
    result.bytes = writer.take();
    return result;
}

std::vector<ListOverride> decodeListOverrides(ByteView plfLfo, PropertyLists& lists,
                                              Remarks& remarks) {
    LittleEndianReader reader(plfLfo, "PlfLfo");
    std::vector<ListOverride> overrides;
    const std::size_t counted = reader.remaining() < 4 ? 0 : reader.u32();
    const std::size_t count = std::min(counted, reader.remaining() / lfoSize);
    if (count < counted) {
        remarks.push_back(u"文件的列表已损坏，只读入了前 " + digits(std::int64_t(count)) +
                          u" 个，用其余列表的段落没有编号或项目符号");
    }
    std::vector<std::size_t> levels(std::min(count, mostLists));
    overrides.reserve(levels.size());
    for (std::size_t& number : levels) {
        overrides.push_back(readLfo(reader, number));
    }
    if (count > mostLists) {
        reader.skip((count - mostLists) * lfoSize);
        remarks.push_back(u"有 " + digits(std::int64_t(count - mostLists)) +
                          u" 个列表引用未读入，一个文档最多 2046 个列表");
    }
    readLfoData(reader, overrides, levels, lists, remarks);
    return overrides;
}

Bytes encodeListOverrides(const std::vector<ListOverride>& overrides, const PropertyLists& lists) {
    LittleEndianWriter writer;
    writer.u32(static_cast<std::uint32_t>(overrides.size()));
    for (const ListOverride& entry : overrides) {
        writeLfo(writer, entry);
    }
    for (const ListOverride& entry : overrides) {
        writeLfoData(writer, entry, lists);
    }
    return writer.take();
}

void completeListDefinitions(std::vector<ListDefinition>& definitions,
                             const std::vector<ListOverride>& overrides) {
    std::unordered_set<std::int32_t> known;
    for (const ListDefinition& list : definitions) {
        known.insert(list.lsid);
    }
    for (const ListOverride& entry : overrides) {
        if (known.insert(entry.lsid).second) {
            ListDefinition& added = definitions.emplace_back();
            added.lsid = entry.lsid;
            added.linkedStyles.fill(StyleDefinition::none);
            added.levels.resize(levelCount, levelWithoutNumber());
        }
    }
}

int leaveOutUnnamedLists(std::vector<ListDefinition>& definitions,
                         const std::vector<ListOverride>& overrides) {
    if (definitions.size() <= mostLists) {
        return 0;
    }
    std::unordered_set<std::int32_t> named;
    for (const ListOverride& entry : overrides) {
        named.insert(entry.lsid);
    }
    return static_cast<int>(std::erase_if(
        definitions, [&](const ListDefinition& list) { return named.erase(list.lsid) == 0; }));
}

void decodeListNames(ByteView sttbListNames, std::vector<ListDefinition>& definitions) {
    const Sttb names = decodeSttb(sttbListNames).table;
    const std::size_t count = std::min(names.entries.size(), definitions.size());
    for (std::size_t i = 0; i < count; ++i) {
        definitions[i].name = names.entries[i].text.substr(0, longestListName);
    }
}

Bytes encodeListNames(const std::vector<std::u16string>& names) {
    Sttb table;
    for (const std::u16string& name : names) {
        table.entries.push_back({name, {}});
    }
    return encodeSttb(table);
}

} // namespace qvnd::word
