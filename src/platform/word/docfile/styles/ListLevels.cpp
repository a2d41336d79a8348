#include "platform/word/docfile/styles/ListLevels.h"

#include "platform/word/docfile/format/NumberFormats.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/docfile/formatting/SoundSprms.h"

#include <algorithm>

namespace qvnd::word {

namespace {

// Offsets in LVLF.
constexpr std::size_t startAt = 0;
constexpr std::size_t numberFormat = 4;
constexpr std::size_t numberPlaces = 6; // rgbxchNums, counted from 1; 0 ends them
constexpr std::size_t followedBy = 15;
constexpr std::size_t characterSize = 24; // cbGrpprlChpx
constexpr std::size_t paragraphSize = 25; // cbGrpprlPapx

constexpr std::uint8_t formatNone = 0xFF;
constexpr std::uint8_t followedByNothing = 2;

bool placesAreSound(const ListLevel& level) {
    unsigned before = 0;
    for (std::size_t i = 0; i < levelCount && level.head[numberPlaces + i] != 0; ++i) {
        const unsigned place = level.head[numberPlaces + i];
        if (place <= before || place > level.text.size() || level.text[place - 1] >= levelCount) {
            return false;
        }
        before = place;
    }
    return true;
}

// The places of numbers as the number text itself shows them.
void placeNumbers(ListLevel& level) {
    std::fill_n(level.head.begin() + numberPlaces, levelCount, std::uint8_t{0});
    std::size_t next = 0;
    for (std::size_t i = 0; i < std::min<std::size_t>(level.text.size(), 255); ++i) {
        if (level.text[i] < levelCount && next < levelCount) {
            level.head[numberPlaces + next++] = static_cast<std::uint8_t>(i + 1);
        }
    }
}

// What no program knows is shown as most lists are: a decimal number, then a tab.
void makeFormSound(ListLevel& level) {
    if (!isNumberFormatOfLists(level.head[numberFormat])) {
        level.head[numberFormat] = 0;
    }
    if (!isFollowedSoundly(level.head[followedBy])) {
        level.head[followedBy] = 0;
    }
}

} // namespace

ListLevel decodeListLevel(LittleEndianReader& reader, PropertyLists& lists) {
    ListLevel level;
    const ByteView head = reader.view(level.head.size());
    std::copy(head.begin(), head.end(), level.head.begin());
    level.head[characterSize] = level.head[paragraphSize] = 0;
    makeFormSound(level);
    // A level that named a list would lead from one to the other without an end.
    const Bytes paragraph = soundSprms(reader.view(head[paragraphSize]), {SprmGroup::paragraph});
    level.paragraph = lists.intern(withoutSprm(withoutStyleNames(paragraph), sprm::PIlfo));
    level.character = lists.intern(
        withoutStyleNames(soundSprms(reader.view(head[characterSize]), {SprmGroup::character})));
    const std::size_t length = reader.u16();
    level.text = reader.text(length);
    if (!placesAreSound(level)) {
        placeNumbers(level);
    }
    return level;
}

void encodeListLevel(LittleEndianWriter& writer, const ListLevel& level,
                     const PropertyLists& lists) {
    const ByteView paragraph = lists[level.paragraph];
    const ByteView character = lists[level.character];
    auto head = level.head;
    head[paragraphSize] = static_cast<std::uint8_t>(paragraph.size());
    head[characterSize] = static_cast<std::uint8_t>(character.size());
    writer.bytes(head);
    writer.bytes(paragraph);
    writer.bytes(character);
    writer.u16(static_cast<unsigned>(level.text.size()));
    writer.text(level.text);
}

ListLevel levelWithoutNumber() {
    ListLevel level;
    level.head[startAt] = 1;
    level.head[numberFormat] = formatNone;
    level.head[followedBy] = followedByNothing;
    return level;
}

} // namespace qvnd::word
