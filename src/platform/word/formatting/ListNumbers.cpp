#include "platform/word/formatting/ListNumbers.h"

#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/formatting/NumberForms.h"

#include <algorithm>

namespace qvnd::word {

namespace {

// LVLF, [MS-DOC] 2.9.150.
constexpr std::size_t formAt = 4;
constexpr std::size_t flagsAt = 5;
constexpr std::size_t followsAt = 15;
constexpr std::size_t restartLimitAt = 26;
constexpr unsigned legalFlag = 0x04;
constexpr unsigned noRestartFlag = 0x08;
constexpr unsigned bulletForm = 23;
constexpr unsigned noForm = 0xFF;

constexpr int highest = 0x7FFFFFF0;

// LFOLVL, [MS-DOC] 2.9.132.
constexpr std::uint32_t levelMask = 0x0F;
constexpr std::uint32_t startFlag = 0x10;

unsigned formOf(const ListLevel& level) { return level.head[formAt]; }

int ownStart(const ListLevel& level) { return LittleEndianReader(level.head, "LVLF").i32(); }

char16_t followerOf(const ListLevel& level) {
    switch (level.head[followsAt]) {
    case 0:
        return u'\t';
    case 1:
        return u' ';
    default:
        return 0;
    }
}

// Whether a paragraph of a higher level makes this one count from its start again.
bool restartsAfter(const ListLevel& level, std::uint8_t higher) {
    const bool limited = (level.head[flagsAt] & noRestartFlag) != 0;
    return !limited || higher < level.head[restartLimitAt];
}

// jc of LVLF, [MS-DOC] 2.9.150: 1 centred, 2 right.
double partBeforeOf(const ListLevel& level) {
    constexpr unsigned alignmentMask = 0x03;
    constexpr unsigned ends = 2;
    return std::min(level.head[flagsAt] & alignmentMask, ends) / 2.0;
}

} // namespace

bool ListNumbers::overridesStart(std::uint16_t ilfo, std::uint8_t ilvl) const {
    const auto& levels = tables_.listOverrides[listIndexOf(ilfo) - 1U].levels;
    return std::any_of(levels.begin(), levels.end(), [&](const ListLevelOverride& level) {
        return (level.flags & levelMask) == ilvl && (level.flags & startFlag) != 0;
    });
}

int ListNumbers::startOf(std::uint16_t ilfo, std::uint8_t ilvl) {
    const ListLevel* level = levels_.level(ilfo, ilvl);
    for (const auto& overriding : tables_.listOverrides[listIndexOf(ilfo) - 1U].levels) {
        if ((overriding.flags & levelMask) == ilvl && (overriding.flags & startFlag) != 0) {
            return overriding.level && level == &*overriding.level ? ownStart(*level)
                                                                   : overriding.startAt;
        }
    }
    return level != nullptr ? ownStart(*level) : 1;
}

// Levels above the first paragraph of a deeper one begin with it, whether its label shows them or
// not: the next paragraph of such a level has its second number.
void ListNumbers::beginAbove(Counts& counts, std::uint16_t ilfo, std::uint8_t ilvl) {
    for (std::uint8_t higher = 0; higher < ilvl; ++higher) {
        if (!counts.at(higher)) {
            counts.at(higher) = startOf(ilfo, higher);
        }
    }
}

void ListNumbers::count(Counts& counts, std::uint16_t ilfo, std::uint8_t ilvl) {
    beginAbove(counts, ilfo, ilvl);
    const bool first = begun_.emplace(ilfo, ilvl).second;
    auto& own = counts.at(ilvl);
    const bool starts = !own || (first && overridesStart(ilfo, ilvl));
    own = starts ? startOf(ilfo, ilvl) : std::min(*own, highest) + 1;
    for (std::uint8_t deeper = ilvl + 1; deeper < deepest; ++deeper) {
        const ListLevel* level = levels_.level(ilfo, deeper);
        if (level != nullptr && restartsAfter(*level, ilvl)) {
            counts.at(deeper).reset();
        }
    }
}

void ListNumbers::compose(const ListLevel& level, Counts& counts, std::uint16_t ilfo,
                          ListLabel& label) {
    const bool digitsOnly = (level.head[flagsAt] & legalFlag) != 0;
    std::optional<std::size_t> firstNumber;
    for (const char16_t c : level.text) {
        if (c >= deepest) {
            label.text += c;
            continue;
        }
        const auto place = static_cast<std::uint8_t>(c);
        const ListLevel* shown = levels_.level(ilfo, place);
        if (!counts.at(place)) {
            counts.at(place) = startOf(ilfo, place);
        }
        const unsigned form = shown != nullptr && !digitsOnly ? formOf(*shown) : 0;
        if (form != noForm) {
            firstNumber = firstNumber.value_or(label.text.size());
            label.text += numberInForm(*counts.at(place), form);
            label.numbers = label.text.substr(*firstNumber);
        }
    }
}

std::optional<ListLabel> ListNumbers::next(std::uint16_t ilfo, std::uint8_t ilvl) {
    const ListLevel* level = ilvl < deepest ? levels_.level(ilfo, ilvl) : nullptr;
    if (level == nullptr || ilfo > lastListIndex) {
        return std::nullopt;
    }
    Counts& counts = counts_[tables_.listOverrides[listIndexOf(ilfo) - 1U].lsid];
    count(counts, ilfo, ilvl);
    ListLabel label;
    label.isBullet = formOf(*level) == bulletForm;
    if (label.isBullet) {
        label.text = level->text;
    } else {
        compose(*level, counts, ilfo, label);
    }
    label.follows = followerOf(*level);
    label.characters = level->character;
    label.partBefore = partBeforeOf(*level);
    label.namesFont = findSprm(tables_.lists[level->character], sprm::CRgFtc0).has_value();
    return label.text.empty() ? std::nullopt : std::optional(label);
}

} // namespace qvnd::word
