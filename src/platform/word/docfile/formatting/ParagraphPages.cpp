#include "platform/word/docfile/formatting/ParagraphPages.h"

#include "platform/word/docfile/container/FormatError.h"
#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"

#include <utility>

namespace qvnd::word {

namespace {

constexpr std::size_t bxSize = 13;

// PapxInFkps. An odd length counts in the first byte, an even one in a second byte behind a 0.
Bytes papx(StyleIndex style, ByteView properties) {
    const std::size_t size = 2 + properties.size();
    LittleEndianWriter writer;
    if (size % 2 == 1) {
        writer.u8(static_cast<unsigned>((size + 1) / 2));
    } else {
        writer.u8(0);
        writer.u8(static_cast<unsigned>(size / 2));
    }
    writer.u16(style);
    writer.bytes(properties);
    return writer.take();
}

// The most bytes of GrpPrlAndIstd in a page with this one paragraph.
constexpr std::size_t longestInPage = 487;

// The GrpPrlAndIstd of a record that goes on to the end of the page; nothing when it does not
// fit. The shortest that can be is the style alone.
std::optional<ByteView> unpacked(ByteView record) {
    const bool second = record[0] == 0;
    if (second && record.size() < 2) {
        return std::nullopt;
    }
    const std::size_t size = second ? std::size_t{2} * record[1] : std::size_t{2} * record[0] - 1;
    const std::size_t start = second ? 2 : 1;
    if (size < 2 || size > record.size() - start) {
        return std::nullopt;
    }
    return record.subspan(start, size);
}

} // namespace

ParagraphPages::ParagraphPages(std::uint32_t fc, StoreInDataStream store,
                               FormattingPages::Take take)
    : store_(std::move(store)), pages_(bxSize, fc, std::move(take)) {}

void ParagraphPages::add(const FormattedParagraph& paragraph) {
    if (paragraph.length > 0) {
        const bool huge = 2 + paragraph.properties.size() > longestInPage;
        pages_.add(pages_.limitFc() + paragraph.length * 2,
                   huge ? papx(paragraph.style,
                               withSprm32({}, sprm::PHugePapx, stored(paragraph.properties)))
                        : papx(paragraph.style, paragraph.properties));
    }
}

// Paragraphs share their lists, so a list is known by its place in memory.
std::uint32_t ParagraphPages::stored(ByteView list) {
    const auto [known, isNew] = stored_.try_emplace(list.data(), 0);
    if (isNew) {
        known->second = store_(encodePrcData(cutSprms(list, longestPrcData).list));
    }
    return known->second;
}

Bytes encodePrcData(ByteView properties) {
    LittleEndianWriter writer;
    writer.u16(static_cast<unsigned>(properties.size()));
    writer.bytes(properties);
    return writer.take();
}

ByteView decodePrcData(ByteView dataStream, std::uint32_t offset) {
    LittleEndianReader reader(dataStream, "PrcData");
    reader.seek(offset);
    const std::size_t size = reader.u16();
    return reader.view(size);
}

ParagraphPage decodeParagraphPage(ByteView bytes) {
    const FormattingEntries decoded = decodeFormattingPage(bytes, bxSize);
    ParagraphPage page;
    page.sound = decoded.sound;
    page.entries.reserve(decoded.entries.size());
    for (const FormattingEntry& entry : decoded.entries) {
        ParagraphEntry run{entry.firstFc, entry.limitFc, 0, {}};
        if (!entry.record.empty()) {
            const auto content = unpacked(entry.record);
            page.sound = page.sound && content;
            if (content) {
                run.style = LittleEndianReader(*content, "PAPX").u16();
                run.properties = content->subspan(2);
            }
        }
        page.entries.push_back(run);
    }
    return page;
}

} // namespace qvnd::word
