#include "platform/word/docfile/formatting/CharacterPages.h"

#include "platform/word/docfile/format/Sprm.h"

#include <map>

namespace qvnd::word {

namespace {

constexpr std::size_t entrySize = 1;

// Without the entries that a later one of the same opcode overrules. Only plain numbers are
// dropped: a variable operand may add to what stands before it.
Bytes withoutOverruled(ByteView list) {
    const std::vector<SprmView> sprms = parseSprms(list).sprms;
    std::map<SprmOpcode, std::size_t> last;
    for (const SprmView& entry : sprms) {
        last[entry.opcode] = entry.operandOffset;
    }
    Bytes result;
    for (const SprmView& entry : sprms) {
        const bool variable = (entry.opcode >> 13) == 6;
        if (variable || last[entry.opcode] == entry.operandOffset) {
            result.insert(result.end(), entry.whole.begin(), entry.whole.end());
        }
    }
    return result;
}

Bytes fitted(ByteView list, int* shortened) {
    Bytes shorter = withoutOverruled(list);
    if (shorter.size() <= longestCharacterProperties) {
        return shorter;
    }
    Bytes result;
    for (const SprmView& entry : parseSprms(shorter).sprms) {
        if (result.size() + entry.whole.size() <= longestCharacterProperties) {
            result.insert(result.end(), entry.whole.begin(), entry.whole.end());
        }
    }
    if (shortened != nullptr) {
        ++*shortened;
    }
    return result;
}

Bytes chpx(ByteView properties) {
    LittleEndianWriter writer;
    if (!properties.empty()) {
        writer.u8(static_cast<unsigned>(properties.size()));
        writer.bytes(properties);
    }
    return writer.take();
}

} // namespace

std::vector<FormattingPage> encodeCharacterPages(std::span<const FormattedCharacters> runs,
                                                 std::uint32_t fc, int* shortened) {
    std::vector<FormattingPage> pages;
    FormattingPageBuilder page(entrySize, fc);
    for (const FormattedCharacters& run : runs) {
        if (run.length == 0) {
            continue;
        }
        const std::uint32_t limit = fc + run.length * 2;
        const bool tooLong = run.properties.size() > longestCharacterProperties;
        const Bytes record =
            tooLong ? chpx(fitted(run.properties, shortened)) : chpx(run.properties);
        if (!page.add(limit, record)) {
            pages.push_back(page.finish());
            page = FormattingPageBuilder(entrySize, fc);
            page.add(limit, record);
        }
        fc = limit;
    }
    if (!page.empty()) {
        pages.push_back(page.finish());
    }
    return pages;
}

CharacterPage decodeCharacterPage(ByteView bytes) {
    const FormattingEntries decoded = decodeFormattingPage(bytes, entrySize);
    CharacterPage page;
    page.sound = decoded.sound;
    for (const FormattingEntry& entry : decoded.entries) {
        CharacterEntry run{entry.firstFc, entry.limitFc, {}};
        if (!entry.record.empty()) {
            const std::size_t size = entry.record[0];
            const bool fits = size < entry.record.size();
            page.sound = page.sound && fits;
            run.properties = fits ? entry.record.subspan(1, size) : ByteView{};
        }
        page.entries.push_back(run);
    }
    return page;
}

} // namespace qvnd::word
