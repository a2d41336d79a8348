#include "platform/word/docfile/styles/ListLevels.h"

#include "platform/word/docfile/formatting/SoundSprms.h"

#include <algorithm>

namespace qvnd::word {

namespace {

// Offsets in LVLF.
constexpr std::size_t startAt = 0;
constexpr std::size_t numberFormat = 4;
constexpr std::size_t followedBy = 15;
constexpr std::size_t characterSize = 24; // cbGrpprlChpx
constexpr std::size_t paragraphSize = 25; // cbGrpprlPapx

constexpr std::uint8_t formatNone = 0xFF;
constexpr std::uint8_t followedByNothing = 2;

} // namespace

ListLevel decodeListLevel(LittleEndianReader& reader, PropertyLists& lists) {
    ListLevel level;
    const ByteView head = reader.view(level.head.size());
    std::copy(head.begin(), head.end(), level.head.begin());
    level.paragraph =
        lists.intern(soundSprms(reader.view(head[paragraphSize]), {SprmGroup::paragraph}));
    level.character =
        lists.intern(soundSprms(reader.view(head[characterSize]), {SprmGroup::character}));
    const std::size_t length = reader.u16();
    level.text = reader.text(length);
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
