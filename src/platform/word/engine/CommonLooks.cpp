#include "platform/word/engine/CommonLooks.h"

#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/text/StoryRepair.h"
#include "platform/word/engine/CharacterFormat.h"

#include <algorithm>
#include <map>
#include <set>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

namespace qvnd::word {

namespace {

std::string_view keyOf(const SprmView& entry) {
    return {reinterpret_cast<const char*>(entry.whole.data()), entry.whole.size()};
}

// The looks of one paragraph, its mark not counted unless it is alone: the bytes of their entries.
std::set<std::string_view> commonLooks(std::span<const CharacterRun> runs, Cp length,
                                       const PropertyLists& lists) {
    const Cp counted = length > 1 ? length - 1 : length;
    std::map<std::string_view, Cp> coverage;
    Cp at = 0;
    for (const CharacterRun& run : runs) {
        const Cp covered = std::min(run.length, counted - std::min(at, counted));
        for (const SprmView& entry : parseSprms(lists[run.properties]).sprms) {
            coverage[keyOf(entry)] += isLook(entry.opcode) ? covered : 0;
        }
        at += run.length;
    }
    std::set<std::string_view> common;
    for (const auto& [entry, characters] : coverage) {
        if (characters * 2 > counted) {
            common.insert(entry);
        }
    }
    return common;
}

PropertyListId without(const std::set<std::string_view>& looks, PropertyListId list,
                       PropertyLists& lists) {
    Bytes kept;
    for (const SprmView& entry : parseSprms(lists[list]).sprms) {
        if (!looks.contains(keyOf(entry))) {
            kept.insert(kept.end(), entry.whole.begin(), entry.whole.end());
        }
    }
    return lists.intern(kept);
}

} // namespace

bool dropCommonLooks(Story& part, PropertyLists& lists) {
    std::vector<CharacterRun> result;
    std::vector<CharacterRun> own; // of one paragraph
    bool dropped = false;
    auto run = part.characters.begin();
    Cp leftOfRun = run != part.characters.end() ? run->length : 0;
    for (const ParagraphRun& paragraph : part.paragraphs) {
        own.clear();
        for (Cp left = paragraph.length; left > 0 && run != part.characters.end();) {
            const Cp length = std::min(left, leftOfRun);
            own.push_back({length, run->properties});
            left -= length;
            leftOfRun -= length;
            if (leftOfRun == 0 && ++run != part.characters.end()) {
                leftOfRun = run->length;
            }
        }
        const std::set<std::string_view> common = commonLooks(own, paragraph.length, lists);
        dropped = dropped || !common.empty();
        for (const CharacterRun& one : own) {
            appendRun(result,
                      {one.length,
                       common.empty() ? one.properties : without(common, one.properties, lists)});
        }
    }
    if (dropped) {
        part.characters = std::move(result);
    }
    return dropped;
}

} // namespace qvnd::word
