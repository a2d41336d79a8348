#include "platform/word/formatting/ResolvedText.h"

#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/formatting/PropertyValues.h"

#include <algorithm>

namespace qvnd::word {

namespace {

std::optional<std::uint32_t> colourOf(const ResolvedProperties& look) {
    const auto entry = settingOf(look, sprm::CIco);
    if (!entry) {
        return std::nullopt;
    }
    return entry->opcode == sprm::CIco ? colourOfIndex(numberOf(*entry))
                                       : colourOfReference(numberOf(*entry));
}

std::optional<std::uint32_t> backgroundOf(const ResolvedProperties& look) {
    if (const auto marker = colourOfIndex(numberOf(look, sprm::CHighlight))) {
        return marker;
    }
    const auto shading = settingOf(look, sprm::CShd80);
    return shading ? colourOfShading(*shading) : std::nullopt;
}

void readFonts(const ResolvedProperties& look, ResolvedText& format) {
    const auto font = [&](SprmOpcode property) {
        return static_cast<std::uint16_t>(numberOf(look, property));
    };
    format.latinFont = font(sprm::CRgFtc0);
    format.eastAsianFont = font(sprm::CRgFtc1);
    format.otherFont = font(sprm::CRgFtc2);
    format.eastAsianHint = numberOf(look, sprm::CIdctHint) == 1;
    constexpr std::uint32_t noLanguage = 0x0400;   // LID, [MS-DOC] 2.9.145
    constexpr std::uint32_t noneOfOffice = 0x00FF; // which the office suite writes for none
    const auto language = settingOf(look, sprm::CRgLid1);
    format.hasNoLanguage =
        language && (numberOf(*language) == noLanguage || numberOf(*language) == noneOfOffice);
}

LetterEffects effectsOf(const ResolvedProperties& look) {
    using Relief = LetterEffects::Relief;
    LetterEffects effects;
    effects.shadowed = look.toggle(sprm::CFShadow);
    effects.outlined = look.toggle(sprm::CFOutline);
    effects.relief = look.toggle(sprm::CFEmboss)    ? Relief::raised
                     : look.toggle(sprm::CFImprint) ? Relief::sunken
                                                    : Relief::none;
    return effects;
}

Underline underlineIn(const ResolvedProperties& look) {
    Underline line = underlineOf(numberOf(look, sprm::CKul));
    if (const auto colour = settingOf(look, sprm::CCvUl)) {
        line.colour = colourOfReference(numberOf(*colour));
    }
    return line;
}

ResolvedText::Emphasis emphasisOf(const ResolvedProperties& look) {
    constexpr std::uint32_t last = 4;
    const std::uint32_t kcd = numberOf(look, sprm::CKcd);
    return kcd <= last ? static_cast<ResolvedText::Emphasis>(kcd) : ResolvedText::Emphasis::none;
}

void readMeasures(const ResolvedProperties& look, ResolvedText& format) {
    constexpr std::uint32_t smallest = 2;
    constexpr std::uint32_t largest = 3276;
    constexpr int farthest = 31680; // no distance is longer than the largest paper
    format.halfPoints = static_cast<int>(std::clamp(numberOf(look, sprm::CHps), smallest, largest));
    format.kernedFrom = static_cast<int>(std::min(numberOf(look, sprm::CHpsKern), largest));
    format.spacing = std::clamp(signedNumberOf(look, sprm::CDxaSpace), -farthest, farthest);
    format.scalePercent =
        static_cast<int>(std::clamp<std::uint32_t>(numberOf(look, sprm::CCharScale), 1, 600));
    format.raisedBy = std::clamp(signedNumberOf(look, sprm::CHpsPos), -3168, 3168);
    const std::uint32_t script = numberOf(look, sprm::CIss);
    format.script = script == 1   ? ResolvedText::Script::raised
                    : script == 2 ? ResolvedText::Script::lowered
                                  : ResolvedText::Script::normal;
}

void readMeaning(ByteView own, ResolvedText& format) {
    constexpr std::uint8_t opposite = 0x81; // of the style, which deletes nothing
    for (const SprmView& entry : parseSprms(own).sprms) {
        switch (entry.opcode) {
        case sprm::CFSpec:
            format.special = entry.operand[0] == 1;
            break;
        case sprm::CFRMarkDel:
            format.deleted = entry.operand[0] == 1 || entry.operand[0] == opposite;
            break;
        case sprm::CFData:
        case sprm::CFOle2:
            format.isData = format.isData || entry.operand[0] == 1;
            break;
        case sprm::CPicLocation:
            format.blob = numberOf(entry);
            break;
        case sprm::CObjLocation:
            format.object = numberOf(entry);
            break;
        case sprm::CSymbol: // which makes the character a special one
            format.special = true;
            format.symbol = {static_cast<std::uint16_t>(numberOf(entry)),
                             static_cast<char16_t>(numberOf(entry) >> 16)};
            break;
        default:
            break;
        }
    }
}

} // namespace

ResolvedText resolvedTextOf(const ResolvedProperties& look, ByteView own) {
    ResolvedText format;
    readFonts(look, format);
    readMeasures(look, format);
    format.bold = look.toggle(sprm::CFBold);
    format.italic = look.toggle(sprm::CFItalic);
    format.underline = underlineIn(look);
    format.emphasis = emphasisOf(look);
    format.struckOut = look.toggle(sprm::CFStrike) || numberOf(look, sprm::CFDStrike) != 0;
    format.effects = effectsOf(look);
    format.capitals = look.toggle(sprm::CFCaps);
    format.smallCapitals = look.toggle(sprm::CFSmallCaps);
    format.hidden = look.toggle(sprm::CFVanish);
    format.snapsToGrid = numberOf(look, sprm::CFUsePgsuSettings) != 0;
    format.colour = colourOf(look);
    format.background = backgroundOf(look);
    format.border = sideOf(look, sprm::CBrc80);
    readMeaning(own, format);
    return format;
}

} // namespace qvnd::word
