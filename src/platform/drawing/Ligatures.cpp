#include "platform/drawing/Ligatures.h"

#include <algorithm>
#include <initializer_list>
#include <optional>
#include <utility>

namespace qvnd::drawing {

namespace {

constexpr std::size_t tagSize = 4;
constexpr unsigned ligatureLookup = 4;
constexpr unsigned extensionLookup = 7;

// A table within a font, or a part of one: numbers are big-endian, offsets count from its begin.
// What lies behind its end reads as 0.
class FontTable {
public:
    explicit FontTable(std::string_view bytes) : bytes_(bytes) {}

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
std::vector<std::uint16_t> lookupsOf(const FontTable& gsub) {
    constexpr std::size_t scriptList = 4;
    constexpr std::size_t featureList = 6;
    constexpr std::size_t featureIndexes = 4; // of a LangSys
    constexpr std::size_t recordSize = tagSize + 2;
    const auto script = gsub.partNamedAt(scriptList).record({"latn", "DFLT"});
    std::vector<std::uint16_t> lookups;
    if (!script || script->u16(0) == 0) { // it has no default language
        return lookups;
    }
    const FontTable features = gsub.partNamedAt(featureList);
    for (const std::uint16_t index : script->partNamedAt(0).array(featureIndexes)) {
        const std::size_t record = 2 + index * recordSize;
        if (features.tag(record) == "liga") {
            const auto own = features.partNamedAt(record + tagSize).array(2);
            lookups.insert(lookups.end(), own.begin(), own.end());
        }
    }
    return lookups;
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

} // namespace

Ligatures::Ligatures(std::string_view table) {
    constexpr std::size_t lookupList = 8;
    const FontTable gsub(table);
    const FontTable lookups = gsub.partNamedAt(lookupList);
    const auto read = [this](const FontTable& part) {
        const auto firsts = coveredBy(part.partNamedAt(2));
        const auto sets = part.array(4);
        for (std::size_t i = 0; i < std::min(firsts.size(), sets.size()); ++i) {
            const FontTable set = part.part(sets[i]);
            for (const std::uint16_t offset : set.array(0)) {
                entries_[firsts[i]].push_back(entryOf(set.part(offset)));
            }
        }
    };
    for (const std::uint16_t index : lookupsOf(gsub)) {
        const FontTable lookup = lookups.partNamedAt(2 + 2 * std::size_t{index});
        for (const std::uint16_t offset : lookup.array(4)) {
            const FontTable part = lookup.part(offset);
            if (lookup.u16(0) == ligatureLookup) {
                read(part);
            } else if (lookup.u16(0) == extensionLookup && part.u16(2) == ligatureLookup) {
                read(part.part(part.u32(4)));
            }
        }
    }
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
