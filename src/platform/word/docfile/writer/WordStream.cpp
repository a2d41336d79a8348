#include "platform/word/docfile/writer/WordStream.h"

#include "platform/error/RunTimeError.h"
#include "platform/word/docfile/format/OfficeArt.h"
#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/formatting/CharacterPages.h"
#include "platform/word/docfile/formatting/ParagraphPages.h"
#include "platform/word/docfile/formatting/Sections.h"
#include "platform/word/docfile/pictures/Md4.h"

#include <algorithm>
#include <stdexcept>
#include <string_view>

namespace qvnd::word {

namespace {

constexpr std::size_t sectorSize = CompoundStore::sectorSize;
constexpr std::size_t leastSize = 4096;
constexpr std::size_t flushFrom = std::size_t{1} << 20;
// FcCompressed keeps 30 bits for an offset.
constexpr std::uint64_t mostBytes = std::uint64_t{1} << 30;

void appendUtf16(Bytes& bytes, std::u16string_view text) {
    const std::size_t start = bytes.size();
    bytes.resize(start + 2 * text.size());
    std::uint8_t* out = bytes.data() + start;
    for (const char16_t c : text) {
        *out++ = static_cast<std::uint8_t>(c);
        *out++ = static_cast<std::uint8_t>(c >> 8);
    }
}

RunTimeError documentTooLarge() {
    return {error::overflow, u"文档过大,Word 97-2003 格式无法保存。"};
}

} // namespace

WordStream::WordStream(CompoundStore& store)
    : store_(store), stream_(store.addStream(u"WordDocument")), fib_(fibRoom) {
    store_.append(stream_, fib_);
}

std::vector<std::uint32_t> WordStream::append(const std::vector<TextRange>& ranges,
                                              const std::vector<Cp>& sectionEnds,
                                              FileProperties& properties, DataStream& data) {
    fillSector();
    const std::uint32_t fc = size();
    const RangeFormatting formatting(ranges, sectionEnds, properties);
    std::vector<std::uint32_t> places = appendText(ranges, formatting.leftOpen());
    // The pages leave no gap: a run without properties covers what lies between the texts.
    const std::uint32_t start = characterPages_.empty() ? fc : textLimit();
    const Cp gap = (fc - start) / 2;
    appendCharacterPages(formatting, start, gap);
    appendParagraphPages(formatting, start, gap, data);
    return places;
}

void WordStream::appendCharacterPages(const RangeFormatting& formatting, std::uint32_t fc, Cp gap) {
    CharacterPages pages(fc, [&](const FormattingPage& page) { take(page, characterPages_); });
    pages.add({gap, {}});
    // Runs share their lists, so a list is known by its place in memory.
    std::unordered_map<const std::uint8_t*, DividedList> divided;
    formatting.tellCharacters([&](const FormattedCharacters& run) {
        if (run.properties.size() <= longestCharacterProperties) {
            pages.add(run);
            return;
        }
        const auto [known, isNew] = divided.try_emplace(run.properties.data());
        if (isNew) {
            known->second = dividedList(run.properties);
        }
        const std::uint32_t first = pages.limitFc();
        pages.add({run.length, known->second.list});
        if (known->second.modifier) {
            overlong_.add(first, pages.limitFc(), *known->second.modifier);
        }
    });
    pages.finish();
    flushPages();
}

void WordStream::appendParagraphPages(const RangeFormatting& formatting, std::uint32_t fc, Cp gap,
                                      DataStream& data) {
    ParagraphPages pages(
        fc, [&](ByteView record) { return data.offsetOfRecord(record); },
        [&](const FormattingPage& page) { take(page, paragraphPages_); });
    pages.add({gap, 0, {}});
    formatting.tellParagraphs([&](const FormattedParagraph& paragraph) { pages.add(paragraph); });
    pages.finish();
    flushPages();
}

WordStream::DividedList WordStream::dividedList(ByteView properties) {
    FittedList fitted = fittedCharacterProperties(properties);
    DividedList result{std::move(fitted.list), std::nullopt};
    if (!fitted.rest.empty()) {
        result.modifier = overlong_.modifierOf(cutSprms(fitted.rest, longestPrcData).list);
    }
    return result;
}

std::vector<std::uint32_t> WordStream::appendText(const std::vector<TextRange>& ranges,
                                                  const std::vector<bool>& leftOpen) {
    std::vector<std::uint32_t> places;
    Bytes bytes;
    for (std::size_t i = 0; i < ranges.size(); ++i) {
        const TextRange& range = ranges[i];
        const std::uint64_t fc = std::uint64_t{size()} + bytes.size();
        if (fc + std::uint64_t{2} * (range.length + 1) > mostBytes) {
            throw documentTooLarge();
        }
        places.push_back(static_cast<std::uint32_t>(fc));
        appendUtf16(bytes,
                    std::u16string_view(range.story->text).substr(range.begin, range.length));
        appendUtf16(bytes, leftOpen[i] ? u"\r" : u"");
        if (bytes.size() >= flushFrom) {
            store_.append(stream_, bytes);
            bytes.clear();
        }
    }
    store_.append(stream_, bytes);
    fillSector();
    return places;
}

void WordStream::take(const FormattingPage& page, BinTableEncoder& table) {
    const std::size_t at = size() + pages_.size();
    table.add(page.firstFc, page.limitFc, static_cast<std::uint32_t>(at / sectorSize));
    pages_.insert(pages_.end(), page.bytes.begin(), page.bytes.end());
    if (pages_.size() >= flushFrom) {
        flushPages();
    }
}

void WordStream::flushPages() {
    store_.append(stream_, pages_);
    pages_.clear();
}

std::uint32_t WordStream::placeOfSection(ByteView properties) {
    const auto [found, isNew] =
        sections_.try_emplace(Bytes(properties.begin(), properties.end()), size());
    if (isNew) {
        store_.append(stream_, encodeSepx(properties));
    }
    return found->second;
}

std::uint32_t WordStream::placeOfPicture(const DataBlob& entry) {
    if (const auto known = pictureEntries_.find(entry); known != pictureEntries_.end()) {
        return known->second;
    }
    const ByteView blip = ByteView(*entry).subspan(art::headerSize + art::fbseSize);
    const auto [found, isNew] = pictures_.try_emplace(md4(blip), size());
    if (isNew) {
        if (std::uint64_t{size()} + blip.size() > mostBytes) {
            throw documentTooLarge();
        }
        store_.append(stream_, blip);
    }
    pictureEntries_.emplace(entry, found->second);
    return found->second;
}

void WordStream::fillSector() {
    const std::size_t rounded = (size() + sectorSize - 1) / sectorSize * sectorSize;
    store_.append(stream_, Bytes(rounded - size()));
}

void WordStream::finish() {
    fillSector();
    if (size() < leastSize) {
        store_.append(stream_, Bytes(leastSize - size()));
    }
}

void WordStream::putFib(const Bytes& fib) {
    if (fib.size() > fibRoom) {
        throw std::invalid_argument("the FIB is larger than its room");
    }
    Bytes now = fib;
    now.resize(fibRoom);
    for (std::uint32_t at = 0; at < fibRoom; at += sectorSize) {
        const ByteView sector = ByteView(now).subspan(at, sectorSize);
        if (!std::equal(sector.begin(), sector.end(), fib_.begin() + at)) {
            store_.overwrite(stream_, at, sector);
        }
    }
    fib_ = std::move(now);
}

} // namespace qvnd::word
