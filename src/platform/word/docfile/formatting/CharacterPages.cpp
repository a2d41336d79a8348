#include "platform/word/docfile/formatting/CharacterPages.h"

#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/docfile/format/SprmFacts.h"

#include <map>
#include <utility>

namespace qvnd::word {

namespace {

constexpr std::size_t offsetSize = 1;

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

template <class Keeps>
Bytes filtered(ByteView list, Keeps keeps) {
    Bytes result;
    for (const SprmView& entry : parseSprms(list).sprms) {
        if (keeps(entry)) {
            result.insert(result.end(), entry.whole.begin(), entry.whole.end());
        }
    }
    return result;
}

bool isOf(SprmKind kind, const SprmView& entry) { return factsOf(entry.opcode).kind == kind; }

// What makes the character what it is stays in any case: it is short.
FittedList divided(ByteView list) {
    const auto isSubstance = [](const SprmView& entry) { return isOf(SprmKind::substance, entry); };
    std::size_t used = filtered(list, isSubstance).size();
    FittedList result;
    for (const SprmView& entry : parseSprms(list).sprms) {
        const bool fits = used + entry.whole.size() <= longestCharacterProperties;
        used += fits && !isSubstance(entry) ? entry.whole.size() : 0;
        Bytes& part = fits || isSubstance(entry) ? result.list : result.rest;
        part.insert(part.end(), entry.whole.begin(), entry.whole.end());
    }
    return result;
}

bool fits(ByteView list) { return list.size() <= longestCharacterProperties; }

Bytes chpx(ByteView properties) {
    LittleEndianWriter writer;
    if (!properties.empty()) {
        writer.u8(static_cast<unsigned>(properties.size()));
        writer.bytes(properties);
    }
    return writer.take();
}

} // namespace

FittedList fittedCharacterProperties(ByteView list) {
    if (fits(list)) {
        return {{list.begin(), list.end()}, {}};
    }
    Bytes shorter = withoutOverruled(list);
    if (!fits(shorter)) {
        shorter = filtered(shorter,
                           [](const SprmView& entry) { return !isOf(SprmKind::session, entry); });
    }
    return fits(shorter) ? FittedList{std::move(shorter), {}} : divided(shorter);
}

CharacterPages::CharacterPages(std::uint32_t fc, FormattingPages::Take take)
    : pages_(offsetSize, fc, std::move(take)) {}

void CharacterPages::add(const FormattedCharacters& run) {
    const Bytes record = fits(run.properties)
                             ? chpx(run.properties)
                             : chpx(fittedCharacterProperties(run.properties).list);
    pages_.add(pages_.limitFc() + run.length * 2, record);
}

CharacterPage decodeCharacterPage(ByteView bytes) {
    const FormattingEntries decoded = decodeFormattingPage(bytes, offsetSize);
    CharacterPage page;
    page.sound = decoded.sound;
    page.entries.reserve(decoded.entries.size());
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
