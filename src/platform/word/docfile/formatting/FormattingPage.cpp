#include "platform/word/docfile/formatting/FormattingPage.h"

#include "platform/word/docfile/container/FormatError.h"
#include "platform/word/docfile/format/Plc.h"

#include <algorithm>

namespace qvnd::word {

namespace {

constexpr std::size_t countAt = formattingPageSize - 1;
constexpr std::uint32_t pageNumberMask = 0x003FFFFF; // PnFkpChpx: the other bits are unused

void putU32(Bytes& page, std::size_t at, std::uint32_t value) {
    for (std::size_t i = 0; i < 4; ++i) {
        page[at + i] = static_cast<std::uint8_t>(value >> (8 * i));
    }
}

// The indexes of the longest series of limits that ascends, of equal limits the last: one damaged
// limit does not take the runs behind it along.
std::vector<std::size_t> ascending(const std::vector<std::uint32_t>& limits) {
    std::vector<std::size_t> ends; // of the best series of each length
    std::vector<std::size_t> before(limits.size());
    for (std::size_t i = 0; i < limits.size(); ++i) {
        const auto end = std::lower_bound(
            ends.begin(), ends.end(), limits[i],
            [&](std::size_t index, std::uint32_t limit) { return limits[index] < limit; });
        before[i] = end == ends.begin() ? i : *(end - 1);
        if (end == ends.end()) {
            ends.push_back(i);
        } else {
            *end = i;
        }
    }
    for (std::size_t j = ends.size() - 1; j > 0; --j) {
        ends[j - 1] = before[ends[j]];
    }
    return ends;
}

} // namespace

FormattingPageBuilder::FormattingPageBuilder(std::size_t entrySize, std::uint32_t firstFc)
    : entrySize_(entrySize), limits_{firstFc}, recordsAt_(countAt), page_(formattingPageSize) {}

std::optional<std::size_t> FormattingPageBuilder::place(ByteView record) const {
    const std::size_t runs = limits_.size(); // with the new one
    const std::size_t front = (runs + 1) * 4 + runs * entrySize_;
    if (front > recordsAt_) {
        return std::nullopt;
    }
    if (record.empty()) {
        return 0;
    }
    if (const auto known = placed_.find(Bytes(record.begin(), record.end()));
        known != placed_.end()) {
        return known->second;
    }
    if (record.size() > recordsAt_) {
        return std::nullopt;
    }
    const std::size_t at = (recordsAt_ - record.size()) & ~std::size_t{1};
    return at >= front ? std::optional(at) : std::nullopt;
}

bool FormattingPageBuilder::add(std::uint32_t limitFc, ByteView record) {
    const auto at = place(record);
    if (!at) {
        return false;
    }
    if (*at != 0 && *at < recordsAt_) {
        std::copy(record.begin(), record.end(), page_.begin() + static_cast<std::ptrdiff_t>(*at));
        placed_.emplace(Bytes(record.begin(), record.end()), *at);
        recordsAt_ = *at;
    }
    limits_.push_back(limitFc);
    offsets_.push_back(static_cast<std::uint8_t>(*at / 2));
    return true;
}

FormattingPage FormattingPageBuilder::finish() const {
    FormattingPage result{page_, limits_.front(), limits_.back()};
    for (std::size_t i = 0; i < limits_.size(); ++i) {
        putU32(result.bytes, i * 4, limits_[i]);
    }
    for (std::size_t i = 0; i < offsets_.size(); ++i) {
        result.bytes[limits_.size() * 4 + i * entrySize_] = offsets_[i];
    }
    result.bytes[countAt] = static_cast<std::uint8_t>(offsets_.size());
    return result;
}

void FormattingPages::add(std::uint32_t limitFc, ByteView record) {
    if (limitFc == fc_) {
        return;
    }
    if (!page_.add(limitFc, record)) {
        finish();
        page_ = FormattingPageBuilder(entrySize_, fc_);
        page_.add(limitFc, record);
    }
    fc_ = limitFc;
}

void FormattingPages::finish() {
    if (!page_.empty()) {
        take_(page_.finish());
    }
}

FormattingEntries decodeFormattingPage(ByteView page, std::size_t entrySize) {
    if (page.size() != formattingPageSize) {
        throw FormatError(FormatError::Kind::damaged, "FKP: not a whole page");
    }
    const std::size_t count = page[countAt];
    const std::size_t front = (count + 1) * 4 + count * entrySize;
    if (count == 0 || front > countAt) {
        throw FormatError(FormatError::Kind::damaged,
                          "FKP: impossible number of runs " + std::to_string(count));
    }
    LittleEndianReader reader(page, "FKP");
    FormattingEntries result;
    result.entries.reserve(count);
    std::vector<std::uint32_t> limits(count + 1);
    std::generate(limits.begin(), limits.end(), [&] { return reader.u32(); });
    const std::vector<std::size_t> kept = ascending(limits);
    result.sound = kept.size() == limits.size();
    for (std::size_t j = 0; j + 1 < kept.size(); ++j) {
        const std::size_t at = std::size_t{2} * page[(count + 1) * 4 + kept[j] * entrySize];
        const bool inBounds = at == 0 || (at >= front && at < countAt);
        result.sound = result.sound && inBounds;
        const bool bare = at == 0 || !inBounds;
        result.entries.push_back({limits[kept[j]], limits[kept[j + 1]],
                                  bare ? ByteView{} : page.subspan(at, countAt - at)});
    }
    return result;
}

void BinTableEncoder::add(std::uint32_t firstFc, std::uint32_t limitFc, std::uint32_t page) {
    if (empty()) {
        positions_.u32(firstFc);
    } else {
        positions_.patchU32(positions_.position() - 4, firstFc);
    }
    positions_.u32(limitFc);
    pages_.u32(page);
    limitFc_ = limitFc;
}

BinTable decodeBinTable(ByteView plc) {
    const Plc decoded = decodePlc(plc, 4);
    BinTable table;
    LittleEndianReader pages(decoded.data, "PnFkp");
    for (std::size_t i = 0; i < decoded.count(); ++i) {
        table.entries.push_back({decoded.positions[i], pages.u32() & pageNumberMask});
    }
    table.limitFc = decoded.positions.empty() ? 0 : decoded.positions.back();
    return table;
}

} // namespace qvnd::word
