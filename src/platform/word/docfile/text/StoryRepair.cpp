#include "platform/word/docfile/text/StoryRepair.h"

#include "platform/word/docfile/format/SpecialCharacters.h"
#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"

#include <algorithm>
#include <array>
#include <unordered_map>

namespace qvnd::word {

namespace {

PropertyListId withoutMeaning(PropertyListId id, PropertyLists& lists) {
    Bytes list(lists[id].begin(), lists[id].end());
    for (const SprmOpcode opcode : {sprm::CFSpec, sprm::CPicLocation, sprm::CObjLocation,
                                    sprm::CFObj, sprm::CFOle2, sprm::CFData}) {
        if (findSprm(list, opcode)) {
            list = withoutSprm(list, opcode);
        }
    }
    return lists.intern(list);
}

PropertyListId asSpecial(PropertyListId id, PropertyLists& lists) {
    const auto special = findSprm(lists[id], sprm::CFSpec);
    return special && special->operand[0] == 1
               ? id
               : lists.intern(withSprm8(lists[id], sprm::CFSpec, 1));
}

// Of a field's characters its separator alone leads to something, to an object.
PropertyListId asFieldMark(PropertyListId id, PropertyLists& lists, bool isSeparator) {
    Bytes list(lists[id].begin(), lists[id].end());
    list = withoutSprm(list, sprm::CPicLocation);
    if (!isSeparator) {
        list = withoutSprm(list, sprm::CObjLocation);
    }
    return asSpecial(lists.intern(list), lists);
}

bool isOn(ByteView list, SprmOpcode opcode) {
    const auto found = findSprm(list, opcode);
    return found && found->operand[0] != 0;
}

bool isSpecialWithoutData(ByteView list) {
    return isOn(list, sprm::CFSpec) && !findSprm(list, sprm::CPicLocation) &&
           !findSprm(list, sprm::CObjLocation) && !isOn(list, sprm::CFObj) &&
           !isOn(list, sprm::CFOle2);
}

// Splits the runs around single characters in one pass.
class RunSplitter {
public:
    explicit RunSplitter(const std::vector<CharacterRun>& runs) : runs_(runs) {}

    // The run of the character at `position`; what is before it goes into the result.
    CharacterRun takeAt(Cp position) {
        while (start_ + remaining() <= position) {
            copy(remaining());
        }
        copy(position - start_);
        const CharacterRun single{1, runs_[run_].properties};
        skip(1);
        return single;
    }

    void append(CharacterRun run) { appendRun(result_, run); }

    std::vector<CharacterRun> finish() {
        while (run_ < runs_.size()) {
            copy(remaining());
        }
        return std::move(result_);
    }

private:
    Cp remaining() const { return runs_[run_].length - used_; }

    void copy(Cp length) {
        appendRun(result_, {length, runs_[run_].properties});
        skip(length);
    }

    void skip(Cp length) {
        start_ += length;
        used_ += length;
        if (run_ < runs_.size() && used_ == runs_[run_].length) {
            ++run_;
            used_ = 0;
        }
    }

    const std::vector<CharacterRun>& runs_;
    std::vector<CharacterRun> result_;
    std::size_t run_ = 0;
    Cp used_ = 0;  // of the current run
    Cp start_ = 0; // where the unused part of the current run starts
};

} // namespace

void appendRun(std::vector<CharacterRun>& runs, CharacterRun run) {
    if (run.length == 0) {
        return;
    }
    if (!runs.empty() && runs.back().properties == run.properties) {
        runs.back().length += run.length;
    } else {
        runs.push_back(run);
    }
}

bool closeWithParagraphMark(Story& story) {
    if (!story.text.empty() && story.text.back() == special::paragraphMark) {
        return false;
    }
    const char16_t last = story.text.empty() ? special::paragraphMark : story.text.back();
    const bool goesOn =
        last != special::paragraphMark && last != special::cellMark && last != special::pageBreak;
    story.text.push_back(special::paragraphMark);
    appendRun(story.characters, {1, PropertyListId::empty});
    if (goesOn) {
        ++story.paragraphs.back().length;
    } else {
        story.paragraphs.push_back({1, 0, PropertyListId::empty});
    }
    return true;
}

void changeProperties(Story& story, std::span<const Cp> positions,
                      const std::function<PropertyListId(Cp, PropertyListId)>& change) {
    if (positions.empty()) {
        return;
    }
    RunSplitter splitter(story.characters);
    for (const Cp position : positions) {
        CharacterRun run = splitter.takeAt(position);
        run.properties = change(position, run.properties);
        splitter.append(run);
    }
    story.characters = splitter.finish();
}

void blankOut(Story& story, std::span<const Cp> positions, PropertyLists& lists) {
    changeProperties(story, positions, [&](Cp position, PropertyListId properties) {
        story.text[position] = u' ';
        return withoutMeaning(properties, lists);
    });
}

void settleMarks(Story& story, PropertyLists& lists) {
    std::vector<Cp> places;
    places.reserve(story.fields.size() + story.anchors.size());
    for (const FieldMark& mark : story.fields) {
        places.push_back(mark.at);
    }
    for (const Anchor& anchor : story.anchors) {
        if (anchor.kind == AnchorKind::drawing) {
            places.push_back(anchor.at);
        }
    }
    std::sort(places.begin(), places.end());
    places.erase(std::unique(places.begin(), places.end()), places.end());
    // Those of separators are the second.
    std::array<std::unordered_map<PropertyListId, PropertyListId>, 2> ofFields;
    changeProperties(story, places, [&](Cp at, PropertyListId properties) {
        if (story.text[at] == special::drawing) {
            return asSpecial(properties, lists);
        }
        const bool isSeparator = story.text[at] == fieldSeparator;
        const auto [known, isNew] = ofFields.at(isSeparator ? 1 : 0).try_emplace(properties);
        if (isNew) {
            known->second = asFieldMark(properties, lists, isSeparator);
        }
        return known->second;
    });
}

std::vector<Cp> picturesWithoutData(const Story& story, const PropertyLists& lists) {
    std::vector<Cp> positions;
    std::unordered_map<PropertyListId, bool> known;
    Cp start = 0;
    for (const CharacterRun& run : story.characters) {
        for (Cp at = start; at < start + run.length; ++at) {
            if (story.text[at] != special::picture) {
                continue;
            }
            auto judged = known.find(run.properties);
            if (judged == known.end()) {
                judged = known.emplace(run.properties, isSpecialWithoutData(lists[run.properties]))
                             .first;
            }
            if (judged->second) {
                positions.push_back(at);
            }
        }
        start += run.length;
    }
    return positions;
}

int repairStyles(Story& story, const StyleSheet& styles) {
    int repaired = 0;
    for (ParagraphRun& paragraph : story.paragraphs) {
        const bool exists = paragraph.style < styles.styles.size() &&
                            styles.styles[paragraph.style] &&
                            styles.styles[paragraph.style]->kind == StyleKind::paragraph;
        if (!exists && paragraph.style != 0) {
            paragraph.style = 0;
            ++repaired;
        }
    }
    return repaired;
}

} // namespace qvnd::word
