#include "platform/word/docfile/text/TableRepair.h"

#include "platform/word/docfile/format/SpecialCharacters.h"
#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/docfile/text/TablePlaces.h"

#include <algorithm>

namespace qvnd::word {

namespace {

bool placesInTable(const SprmView& entry) {
    switch (entry.opcode) {
    case sprm::PFInTable:
    case sprm::PItap:
    case sprm::PFTtp:
    case sprm::PFInnerTableCell:
    case sprm::PFInnerTtp:
        return true;
    default:
        return groupOf(entry.opcode) == SprmGroup::table;
    }
}

class Repair {
public:
    Repair(Story& story, PropertyLists& lists) : story_(story), places_(lists), texts_(lists) {}

    int run() {
        ends_.reserve(story_.paragraphs.size());
        moved_.resize(story_.paragraphs.size());
        for (std::size_t i = 0; i < story_.paragraphs.size(); ++i) {
            end_ += story_.paragraphs[i].length;
            ends_.push_back(end_);
            take(i);
        }
        closeDeeper(0, story_.paragraphs.size());
        return static_cast<int>(std::count(moved_.begin(), moved_.end(), true));
    }

private:
    // Rows begun and not ended, by depth: their first paragraph, or none.
    static constexpr std::size_t none = static_cast<std::size_t>(-1);

    TablePlace placeOf(std::size_t i) {
        const ParagraphRun& paragraph = story_.paragraphs[i];
        return paragraph.length == 0 ? TablePlace{}
                                     : places_.of(paragraph.properties, story_.text[ends_[i] - 1]);
    }

    void take(std::size_t i) {
        const TablePlace place = placeOf(i);
        const auto depth = static_cast<std::size_t>(place.depth);
        closeDeeper(depth, i);
        if (depth == 0) {
            if (story_.paragraphs[i].length != 0 && story_.text[end_ - 1] == special::cellMark) {
                move(i, 0);
            }
            return;
        }
        rows_.resize(depth, none);
        for (std::size_t& first : rows_) {
            first = first == none ? i : first;
        }
        if (place.rowEnd) {
            rows_.back() = none;
        }
    }

    void closeDeeper(std::size_t depth, std::size_t limit) {
        while (rows_.size() > depth) {
            const std::size_t first = rows_.back();
            const int level = static_cast<int>(rows_.size());
            rows_.pop_back();
            for (std::size_t i = first; first != none && i < limit; ++i) {
                if (placeOf(i).depth >= level) {
                    move(i, level - 1);
                }
            }
        }
    }

    void move(std::size_t i, int depth) {
        ParagraphRun& paragraph = story_.paragraphs[i];
        paragraph.properties = texts_.at(depth, paragraph.properties);
        char16_t& mark = story_.text[ends_[i] - 1];
        mark = mark == special::cellMark ? special::paragraphMark : mark;
        moved_[i] = true;
    }

    Story& story_;
    TablePlaces places_;
    TextLists texts_;
    std::vector<Cp> ends_;
    Cp end_ = 0;
    std::vector<std::size_t> rows_;
    std::vector<bool> moved_; // by paragraph
};

} // namespace

PropertyListId TextLists::at(int depth, PropertyListId properties) {
    const auto [known, isNew] = known_.try_emplace({depth, properties}, PropertyListId::empty);
    if (isNew) {
        known->second = made(depth, properties);
    }
    return known->second;
}

PropertyListId TextLists::made(int depth, PropertyListId properties) {
    Bytes kept;
    for (const SprmView& entry : parseSprms(lists_[properties]).sprms) {
        if (!placesInTable(entry)) {
            kept.insert(kept.end(), entry.whole.begin(), entry.whole.end());
        }
    }
    if (depth > 0) {
        kept = withSprm32(withSprm8(kept, sprm::PFInTable, 1), sprm::PItap,
                          static_cast<std::uint32_t>(depth));
    }
    return lists_.intern(kept);
}

int repairTables(Story& story, PropertyLists& lists) { return Repair(story, lists).run(); }

} // namespace qvnd::word
