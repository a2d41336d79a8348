#include "platform/word/docfile/formatting/FormattingRuns.h"

#include "platform/word/docfile/container/FormatError.h"

#include <algorithm>
#include <limits>
#include <unordered_map>

namespace qvnd::word {

namespace {

bool ascends(const BinTable& table) {
    std::uint32_t last = 0;
    for (const BinTable::Entry& entry : table.entries) {
        if (entry.firstFc < last) {
            return false;
        }
        last = entry.firstFc;
    }
    return table.limitFc >= last;
}

std::vector<FormattingRun> pageRuns(ByteView wordDocument, std::uint32_t page,
                                    const PageDecoder& decode, int& damaged) {
    const std::size_t at = std::size_t{page} * formattingPageSize;
    std::vector<FormattingRun> runs;
    bool sound = at + formattingPageSize <= wordDocument.size();
    if (sound) {
        try {
            runs = decode(wordDocument.subspan(at, formattingPageSize), sound);
        } catch (const FormatError&) {
            sound = false;
        }
    }
    damaged += sound ? 0 : 1;
    return runs;
}

void appendClipped(std::vector<FormattingRun>& runs, const std::vector<FormattingRun>& ofPage,
                   std::uint32_t first, std::uint32_t limit) {
    for (FormattingRun run : ofPage) {
        run.firstFc = std::max(run.firstFc, first);
        run.limitFc = std::min(run.limitFc, limit);
        if (run.firstFc < run.limitFc) {
            runs.push_back(run);
        }
    }
}

// By page, the last entry that names it.
std::unordered_map<std::uint32_t, std::size_t> lastEntries(const BinTable& table) {
    std::unordered_map<std::uint32_t, std::size_t> last;
    for (std::size_t i = 0; i < table.entries.size(); ++i) {
        last[table.entries[i].page] = i;
    }
    return last;
}

std::vector<FormattingRun> withoutOverlaps(std::vector<FormattingRun> runs) {
    const auto isBefore = [](const FormattingRun& a, const FormattingRun& b) {
        return a.firstFc < b.firstFc;
    };
    if (!std::is_sorted(runs.begin(), runs.end(), isBefore)) {
        std::stable_sort(runs.begin(), runs.end(), isBefore);
    }
    std::uint32_t limit = 0;
    auto kept = runs.begin();
    for (FormattingRun run : runs) {
        run.firstFc = std::max(run.firstFc, limit);
        if (run.firstFc < run.limitFc) {
            limit = run.limitFc;
            *kept++ = run;
        }
    }
    runs.erase(kept, runs.end());
    return runs;
}

} // namespace

FormattingRuns readFormattingRuns(ByteView wordDocument, const BinTable& table,
                                  const PageDecoder& decode) {
    FormattingRuns result;
    std::vector<FormattingRun> runs;
    const bool ordered = ascends(table);
    const std::unordered_map<std::uint32_t, std::size_t> last = lastEntries(table);
    // A table may name a page for each of many stretches of text; it is decoded once, and kept for
    // as long as an entry is to come that names it.
    std::unordered_map<std::uint32_t, std::vector<FormattingRun>> pages;
    for (std::size_t i = 0; i < table.entries.size(); ++i) {
        const BinTable::Entry& entry = table.entries[i];
        const std::uint32_t limit =
            i + 1 < table.entries.size() ? table.entries[i + 1].firstFc : table.limitFc;
        if (ordered && entry.firstFc >= limit) {
            continue;
        }
        const auto [page, isNew] = pages.try_emplace(entry.page);
        if (isNew) {
            page->second = pageRuns(wordDocument, entry.page, decode, result.damagedPages);
        } else if (!ordered) {
            continue;
        }
        appendClipped(runs, page->second, ordered ? entry.firstFc : 0,
                      ordered ? limit : std::numeric_limits<std::uint32_t>::max());
        if (last.at(entry.page) == i) {
            pages.erase(page);
        }
    }
    result.runs = withoutOverlaps(std::move(runs));
    return result;
}

FormattingRun FormattingLookup::at(std::uint32_t fc) {
    const auto covers = [&](std::size_t i) {
        return i < runs_.size() && runs_[i].firstFc <= fc && fc < runs_[i].limitFc;
    };
    if (covers(hint_)) {
        return runs_[hint_];
    }
    if (covers(hint_ + 1)) {
        return runs_[++hint_];
    }
    const auto next = std::upper_bound(
        runs_.begin(), runs_.end(), fc,
        [](std::uint32_t wanted, const FormattingRun& run) { return wanted < run.firstFc; });
    hint_ = next == runs_.begin() ? 0 : static_cast<std::size_t>(next - runs_.begin()) - 1;
    if (covers(hint_)) {
        return runs_[hint_];
    }
    const std::uint32_t limit =
        next == runs_.end() ? std::numeric_limits<std::uint32_t>::max() : next->firstFc;
    return {fc, limit, 0, PropertyListId::empty, false};
}

} // namespace qvnd::word
