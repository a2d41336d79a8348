#include "platform/drawing/FontFeatures.h"

#include <algorithm>
#include <bit>
#include <initializer_list>
#include <optional>
#include <utility>

namespace qvnd::drawing {

namespace {

constexpr std::size_t tagSize = 4;
// The kinds of lookups of a table: the one that is read, and the one that stands for any other.
struct LookupKinds {
    unsigned wanted;
    unsigned extension;
};
constexpr LookupKinds ligatures{4, 7}; // of GSUB
constexpr LookupKinds pairs{2, 9};     // of GPOS

// A table within a font, or a part of one: numbers are big-endian, offsets count from its begin.
// What lies behind its end reads as 0.
class FontTable {
public:
    explicit FontTable(std::string_view bytes) : bytes_(bytes) {}

    int i16(std::size_t at) const { return static_cast<std::int16_t>(u16(at)); }
    unsigned u16(std::size_t at) const { return (byte(at) << 8) | byte(at + 1); }
    std::size_t u32(std::size_t at) const { return (std::size_t{u16(at)} << 16) | u16(at + 2); }
    std::string_view tag(std::size_t at) const {
        return at < bytes_.size() ? bytes_.substr(at, tagSize) : std::string_view();
    }
    FontTable part(std::size_t offset) const {
        return FontTable(offset < bytes_.size() ? bytes_.substr(offset) : std::string_view());
    }
    FontTable partNamedAt(std::size_t at) const { return part(u16(at)); }
    // The numbers of an array that its length stands before.
    std::vector<std::uint16_t> array(std::size_t at) const {
        std::vector<std::uint16_t> numbers;
        const std::size_t length = std::min<std::size_t>(u16(at), bytes_.size() / 2);
        for (std::size_t i = 0; i < length; ++i) {
            numbers.push_back(static_cast<std::uint16_t>(u16(at + 2 + 2 * i)));
        }
        return numbers;
    }
    // The part of the first of these tags that a list of records (tag, offset) has.
    std::optional<FontTable> record(std::initializer_list<std::string_view> tags) const {
        constexpr std::size_t recordSize = tagSize + 2;
        for (const std::string_view wanted : tags) {
            for (std::size_t i = 0; i < u16(0); ++i) {
                const std::size_t at = 2 + i * recordSize;
                if (tag(at) == wanted) {
                    return partNamedAt(at + tagSize);
                }
            }
        }
        return std::nullopt;
    }

private:
    unsigned byte(std::size_t at) const {
        return at < bytes_.size() ? static_cast<unsigned char>(bytes_[at]) : 0;
    }

    std::string_view bytes_;
};

// The lookups of the feature, in the order of the features that the script has.
std::vector<std::uint16_t> lookupsOf(const FontTable& table, std::string_view feature) {
    constexpr std::size_t scriptList = 4;
    constexpr std::size_t featureList = 6;
    constexpr std::size_t featureIndexes = 4; // of a LangSys
    constexpr std::size_t recordSize = tagSize + 2;
    const auto script = table.partNamedAt(scriptList).record({"latn", "DFLT"});
    std::vector<std::uint16_t> lookups;
    if (!script || script->u16(0) == 0) { // it has no default language
        return lookups;
    }
    const FontTable features = table.partNamedAt(featureList);
    for (const std::uint16_t index : script->partNamedAt(0).array(featureIndexes)) {
        const std::size_t record = 2 + index * recordSize;
        if (features.tag(record) == feature) {
            const auto own = features.partNamedAt(record + tagSize).array(2);
            lookups.insert(lookups.end(), own.begin(), own.end());
        }
    }
    return lookups;
}

// Calls `read` with the parts of each lookup of the feature until it returns true.
template <class Read>
void readLookups(const FontTable& table, std::string_view feature, LookupKinds kinds, Read read) {
    constexpr std::size_t lookupList = 8;
    const FontTable lookups = table.partNamedAt(lookupList);
    for (const std::uint16_t index : lookupsOf(table, feature)) {
        const FontTable lookup = lookups.partNamedAt(2 + 2 * std::size_t{index});
        for (const std::uint16_t offset : lookup.array(4)) {
            const FontTable part = lookup.part(offset);
            const bool isExtended = lookup.u16(0) == kinds.extension && part.u16(2) == kinds.wanted;
            const FontTable own = isExtended ? part.part(part.u32(4)) : part;
            if ((isExtended || lookup.u16(0) == kinds.wanted) && read(own)) {
                break;
            }
        }
    }
}

// The glyphs of a coverage table, in its order.
std::vector<std::uint16_t> coveredBy(const FontTable& coverage) {
    constexpr std::size_t rangeSize = 6;
    if (coverage.u16(0) == 1) {
        return coverage.array(2);
    }
    std::vector<std::uint16_t> glyphs;
    for (std::size_t i = 0; coverage.u16(0) == 2 && i < coverage.u16(2); ++i) {
        const std::size_t at = 4 + i * rangeSize;
        for (unsigned glyph = coverage.u16(at); glyph <= coverage.u16(at + 2); ++glyph) {
            glyphs.push_back(static_cast<std::uint16_t>(glyph));
        }
    }
    return glyphs;
}

Ligatures::Entry entryOf(const FontTable& ligature) {
    Ligatures::Entry entry;
    entry.glyph = static_cast<std::uint16_t>(ligature.u16(0));
    const unsigned count = ligature.u16(2);
    for (unsigned i = 1; i < count; ++i) {
        entry.others.push_back(static_cast<std::uint16_t>(ligature.u16(2 + 2 * std::size_t{i})));
    }
    return entry;
}

// The class of a glyph; 0 for one that a table of classes does not name.
unsigned classOf(const FontTable& classes, unsigned glyph) {
    constexpr std::size_t rangeSize = 6;
    if (classes.u16(0) == 1) {
        const unsigned first = classes.u16(2);
        const bool isNamed = glyph >= first && glyph - first < classes.u16(4);
        return isNamed ? classes.u16(6 + 2 * std::size_t{glyph - first}) : 0;
    }
    for (std::size_t i = 0; classes.u16(0) == 2 && i < classes.u16(2); ++i) {
        const std::size_t at = 4 + i * rangeSize;
        if (glyph >= classes.u16(at) && glyph <= classes.u16(at + 2)) {
            return classes.u16(at + 4);
        }
    }
    return 0;
}

// The values that a table of pairs has for each: which, and how many bytes they take.
struct PairValues {
    explicit PairValues(const FontTable& part)
        : first(part.u16(4)), size(2 * std::size_t(std::popcount(first)) +
                                   2 * std::size_t(std::popcount(part.u16(6)))) {}

    // The change of the first glyph's advance.
    int advanceAt(const FontTable& part, std::size_t at) const {
        constexpr unsigned placement = 0x0003;
        constexpr unsigned advance = 0x0004;
        const std::size_t before = 2 * std::size_t(std::popcount(first & placement));
        return (first & advance) != 0 ? part.i16(at + before) : 0;
    }

    unsigned first;
    std::size_t size;
};

// The change that a table of pairs has for two glyphs; nothing where it does not know the pair.
std::optional<int> changeIn(const FontTable& part, unsigned first, unsigned second) {
    const PairValues values(part);
    const auto covered = coveredBy(part.partNamedAt(2));
    const auto found = std::find(covered.begin(), covered.end(), first);
    if (found == covered.end()) {
        return std::nullopt;
    }
    if (part.u16(0) == 1) {
        const auto index = static_cast<std::size_t>(found - covered.begin());
        const FontTable set = part.partNamedAt(10 + 2 * index);
        for (std::size_t i = 0; i < set.u16(0); ++i) {
            const std::size_t at = 2 + i * (2 + values.size);
            if (set.u16(at) == second) {
                return values.advanceAt(set, at + 2);
            }
        }
        return std::nullopt;
    }
    const std::size_t row = classOf(part.partNamedAt(8), first);
    const std::size_t column = classOf(part.partNamedAt(10), second);
    const bool isThere = part.u16(0) == 2 && row < part.u16(12) && column < part.u16(14);
    return isThere ? std::optional(
                         values.advanceAt(part, 16 + (row * part.u16(14) + column) * values.size))
                   : std::nullopt;
}

} // namespace

int Kerning::between(std::uint16_t first, std::uint16_t second) {
    const auto [known, isNew] = known_.try_emplace({first, second}, 0);
    if (isNew) {
        int& sum = known->second;
        readLookups(FontTable(table_), "kern", pairs, [&](const FontTable& part) {
            const auto change = changeIn(part, first, second);
            sum += change.value_or(0);
            return change.has_value();
        });
    }
    return known->second;
}

Ligatures::Ligatures(std::string_view table) {
    readLookups(FontTable(table), "liga", ligatures, [this](const FontTable& part) {
        const auto firsts = coveredBy(part.partNamedAt(2));
        const auto sets = part.array(4);
        for (std::size_t i = 0; i < std::min(firsts.size(), sets.size()); ++i) {
            const FontTable set = part.part(sets[i]);
            for (const std::uint16_t offset : set.array(0)) {
                entries_[firsts[i]].push_back(entryOf(set.part(offset)));
            }
        }
        return false;
    });
}

const Ligatures::Entry* Ligatures::find(std::span<const std::uint16_t> glyphs) const {
    const auto found = glyphs.empty() ? entries_.end() : entries_.find(glyphs.front());
    if (found == entries_.end()) {
        return nullptr;
    }
    const auto behind = glyphs.subspan(1);
    const auto entry =
        std::find_if(found->second.begin(), found->second.end(), [&](const Entry& one) {
            return one.others.size() <= behind.size() &&
                   std::equal(one.others.begin(), one.others.end(), behind.begin());
        });
    return entry == found->second.end() ? nullptr : &*entry;
}

} // namespace qvnd::drawing
