#pragma once

#include "platform/word/docfile/container/Bytes.h"

#include <array>
#include <functional>
#include <map>
#include <optional>
#include <utility>
#include <vector>

// What character and paragraph pages (FKP) have in common, [MS-DOC] 2.9.33 ChpxFkp and 2.9.174
// PapxFkp: 512 bytes at a multiple of 512 in the WordDocument stream. From the front the ends of
// the runs as file offsets and one entry a run, whose first byte is half the offset of the run's
// properties; from the back the properties; the last byte is the number of runs.
namespace qvnd::word {

inline constexpr std::size_t formattingPageSize = 512;

// A page ready to be written, with the text that it covers: [firstFc, limitFc).
struct FormattingPage {
    Bytes bytes; // 512
    std::uint32_t firstFc = 0;
    std::uint32_t limitFc = 0;
};

// Fills one page. Equal properties are stored once.
class FormattingPageBuilder {
public:
    // `entrySize` is 1 for characters, 13 (a BxPap) for paragraphs.
    FormattingPageBuilder(std::size_t entrySize, std::uint32_t firstFc);

    // Adds the run from the last limit to `limitFc`; `record` is what the entry's offset leads
    // to, empty for none. Answers false, and changes nothing, when the page has no room.
    bool add(std::uint32_t limitFc, ByteView record);
    bool empty() const { return limits_.size() == 1; }
    FormattingPage finish() const;

private:
    std::optional<std::size_t> place(ByteView record) const;

    std::size_t entrySize_;
    std::vector<std::uint32_t> limits_; // the first FC, then the limit of each run
    std::vector<std::uint8_t> offsets_; // halved
    std::map<Bytes, std::size_t> placed_;
    std::size_t recordsAt_; // where the lowest record starts
    Bytes page_;
};

// Fills page after page with runs that follow each other, and hands each full one on.
class FormattingPages {
public:
    using Take = std::function<void(const FormattingPage& page)>;

    // The first run starts at the file offset `fc`.
    FormattingPages(std::size_t entrySize, std::uint32_t fc, Take take)
        : entrySize_(entrySize), fc_(fc), take_(std::move(take)), page_(entrySize, fc) {}

    // A run up to `limitFc`; one of no length is left out.
    void add(std::uint32_t limitFc, ByteView record);
    std::uint32_t limitFc() const { return fc_; }
    // Hands the last page on, unless it is empty.
    void finish();

private:
    std::size_t entrySize_;
    std::uint32_t fc_;
    Take take_;
    FormattingPageBuilder page_;
};

// A run of a page read from a file. `record` starts where its offset leads and goes on to the
// end of the page's records; empty when the offset is 0 or leads into nowhere.
struct FormattingEntry {
    std::uint32_t firstFc = 0;
    std::uint32_t limitFc = 0;
    ByteView record;
};

struct FormattingEntries {
    std::vector<FormattingEntry> entries;
    bool sound = true; // false: something was out of bounds and left out
};

// Throws FormatError (damaged) when `page` is not 512 bytes long or its number of runs cannot be.
FormattingEntries decodeFormattingPage(ByteView page, std::size_t entrySize);

// The bin table: which page holds the formatting of which text, [MS-DOC] 2.8.5 PlcBteChpx and
// 2.8.6 PlcBtePapx. A page's number is its offset in the WordDocument stream / 512.
struct BinTable {
    struct Entry {
        std::uint32_t firstFc = 0;
        std::uint32_t page = 0;
        bool operator==(const Entry&) const = default;
    };
    std::vector<Entry> entries;
    std::uint32_t limitFc = 0; // behind the text of the last page
};

BinTable decodeBinTable(ByteView plc);

// A bin table that grows page by page, kept as the file has it.
class BinTableEncoder {
public:
    // The page with the number `page` covers [firstFc, limitFc), behind all that is there.
    void add(std::uint32_t firstFc, std::uint32_t limitFc, std::uint32_t page);
    bool empty() const { return pages_.position() == 0; }
    std::uint32_t limitFc() const { return limitFc_; }
    // The table: its positions and, behind them, its page numbers. Valid until the next add().
    std::array<ByteView, 2> parts() const { return {positions_.data(), pages_.data()}; }

private:
    LittleEndianWriter positions_;
    LittleEndianWriter pages_;
    std::uint32_t limitFc_ = 0;
};

} // namespace qvnd::word
