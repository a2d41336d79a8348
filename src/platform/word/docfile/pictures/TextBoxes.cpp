#include "platform/word/docfile/pictures/TextBoxes.h"

#include "platform/word/docfile/format/Plc.h"

#include <algorithm>

namespace qvnd::word {

namespace {

constexpr std::size_t textBoxSize = 22; // FTXBXS
constexpr std::size_t breakSize = 6;    // Tbkd
constexpr std::size_t reusableAt = 8;   // fReusable
constexpr std::size_t shapeAt = 14;     // lid

// The last text box is there for the format's sake only.
std::size_t realCount(const Plc& boxes) { return std::max<std::size_t>(boxes.count(), 1) - 1; }

bool isForReuse(ByteView box) {
    LittleEndianReader reader(box, "FTXBXS");
    reader.seek(reusableAt);
    return (reader.u16() & 1U) != 0;
}

std::uint32_t shapeOf(ByteView box) {
    LittleEndianReader reader(box, "FTXBXS");
    reader.seek(shapeAt);
    return reader.u32();
}

} // namespace

int countTextBoxes(ByteView table) {
    const Plc boxes = decodePlc(table, textBoxSize);
    int count = 0;
    for (std::size_t i = 0; i < realCount(boxes); ++i) {
        count += isForReuse(boxes.element(i)) ? 0 : 1;
    }
    return count;
}

std::vector<BoxText> readBoxTexts(ByteView table, ByteView breakTable, Cp length) {
    const Plc boxes = decodePlc(table, textBoxSize);
    std::vector<BoxText> texts(boxes.count() == 0 ? 0 : realCount(boxes));
    Cp end = 0; // texts do not overlap, whatever a damaged table says
    for (std::size_t i = 0; i < texts.size(); ++i) {
        const Cp start = std::max(boxes.positions[i], end);
        const Cp limit = std::min(boxes.positions[i + 1], length);
        if (start < limit && !isForReuse(boxes.element(i))) {
            end = limit;
            texts[i] = {start, limit - start, shapeOf(boxes.element(i)), {}};
        }
    }
    const Plc breaks = decodePlc(breakTable, breakSize);
    for (std::size_t i = 0; i + 1 < breaks.count(); ++i) {
        const std::size_t box = LittleEndianReader(breaks.element(i), "Tbkd").u16();
        const Cp at = breaks.positions[i];
        if (box < texts.size() && at > texts[box].start &&
            at < texts[box].start + texts[box].length) {
            texts[box].breaks.push_back(at - texts[box].start);
        }
    }
    return texts;
}

} // namespace qvnd::word
