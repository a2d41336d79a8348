#include "platform/word/layout/SectionPages.h"

#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"

#include <algorithm>

namespace qvnd::word {

namespace {

int firstNumber(ByteView section) {
    const auto start = findSprm(section, sprm::SPgnStart97);
    return start ? start->operand[0] | (start->operand[1] << 8) : 1;
}

bool restarts(ByteView section) {
    const auto restart = findSprm(section, sprm::SFPgnRestart);
    return restart && restart->operand[0] != 0;
}

} // namespace

std::vector<Cp> sectionStarts(const std::vector<SectionRun>& sections) {
    std::vector<Cp> starts;
    Cp at = 0;
    for (const SectionRun& section : sections) {
        starts.push_back(at);
        at += section.length;
    }
    return starts;
}

PageNumbering::PageNumbering(const DocumentContent& content, std::vector<int> firstSheets) {
    counts_.push_back({});
    const std::vector<Cp> starts = sectionStarts(content.sections);
    for (std::size_t i = 0; i < starts.size() && i < firstSheets.size(); ++i) {
        const ByteView section = content.tables.lists[content.sections[i].properties];
        if (restarts(section)) {
            counts_.push_back({starts[i], firstSheets[i], firstNumber(section)});
        }
    }
}

int PageNumbering::shown(Cp position, int sheet) const {
    const auto behind = std::upper_bound(counts_.begin(), counts_.end(), position,
                                         [](Cp p, const Count& count) { return p < count.from; });
    const Count& count = *std::prev(behind);
    return count.number + sheet - count.sheet;
}

} // namespace qvnd::word
