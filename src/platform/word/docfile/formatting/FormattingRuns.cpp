#include "platform/word/docfile/formatting/FormattingRuns.h"

#include "platform/word/docfile/container/FormatError.h"

#include <algorithm>
#include <limits>
#include <set>

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

std::vector<FormattingRun> withoutOverlaps(std::vector<FormattingRun> runs) {
    std::stable_sort(runs.begin(), runs.end(), [](const FormattingRun& a, const FormattingRun& b) {
        return a.firstFc < b.firstFc;
    });
    std::vector<FormattingRun> result;
    std::uint32_t limit = 0;
    for (FormattingRun run : runs) {
        run.firstFc = std::max(run.firstFc, limit);
        if (run.firstFc < run.limitFc) {
            limit = run.limitFc;
            result.push_back(run);
        }
    }
    return result;
}

} // namespace

FormattingRuns readFormattingRuns(ByteView wordDocument, const BinTable& table,
                                  const PageDecoder& decode) {
    FormattingRuns result;
    std::vector<FormattingRun> runs;
    const bool ordered = ascends(table);
    std::set<std::uint32_t> seen;
    for (std::size_t i = 0; i < table.entries.size(); ++i) {
        const BinTable::Entry& entry = table.entries[i];
        if (!ordered && !seen.insert(entry.page).second) {
            continue;
        }
        const auto ofPage = pageRuns(wordDocument, entry.page, decode, result.damagedPages);
        const std::uint32_t limit =
            i + 1 < table.entries.size() ? table.entries[i + 1].firstFc : table.limitFc;
        appendClipped(runs, ofPage, ordered ? entry.firstFc : 0,
                      ordered ? limit : std::numeric_limits<std::uint32_t>::max());
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
