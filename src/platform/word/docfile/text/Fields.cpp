#include "platform/word/docfile/text/Fields.h"

#include "platform/word/docfile/format/Plc.h"

#include <algorithm>

namespace qvnd::word {

namespace {

constexpr std::size_t fldSize = 2;
constexpr std::uint8_t characterMask = 0x1F;
constexpr std::uint8_t unknownKind = 1;
constexpr std::uint8_t unusedData = 0xFF; // what a separator bears
constexpr std::uint8_t endHasSeparator = 0x80;

// All field characters of a text, in order, with what is known of them.
struct CharacterMarks {
    std::vector<FieldMark> marks;
    std::vector<bool> listed; // whether the file has an entry for the mark
    int unlisted = 0;
    int entriesWithoutMark = 0;
};

CharacterMarks characterMarks(std::span<const FieldMark> known, std::u16string_view text) {
    CharacterMarks result;
    const auto count =
        static_cast<std::size_t>(std::count_if(text.begin(), text.end(), isFieldCharacter));
    result.marks.reserve(count);
    result.listed.reserve(count);
    auto next = known.begin();
    for (Cp at = 0; at < text.size(); ++at) {
        if (!isFieldCharacter(text[at])) {
            continue;
        }
        next = std::find_if(next, known.end(), [&](const FieldMark& m) { return m.at >= at; });
        const bool listed = next != known.end() && next->at == at && next->character == text[at];
        const std::uint8_t data = text[at] == fieldBegin ? unknownKind : std::uint8_t{0};
        result.listed.push_back(listed);
        result.marks.push_back(listed ? *next
                                      : FieldMark{at, static_cast<std::uint8_t>(text[at]), data});
        result.unlisted += listed ? 0 : 1;
    }
    const auto used = static_cast<int>(count) - result.unlisted;
    result.entriesWithoutMark = static_cast<int>(known.size()) - used;
    return result;
}

// Finds each begin's end; what has no counterpart keeps `false`.
class FieldMatcher {
public:
    explicit FieldMatcher(CharacterMarks& marks)
        : marks_(marks.marks), listed_(marks.listed), kept_(marks_.size()) {}

    std::vector<bool> match() {
        for (std::size_t i = 0; i < marks_.size(); ++i) {
            switch (marks_[i].character) {
            case fieldBegin:
                open_.push_back({static_cast<std::uint32_t>(i), none});
                break;
            case fieldSeparator:
                separate(i);
                break;
            default:
                close(i);
            }
        }
        return kept_;
    }

    // Marks of fields without a result. Programs list none of those of entries of an index.
    int needNoEntry() const { return needNoEntry_; }

private:
    static constexpr std::uint32_t none = 0xFFFFFFFF;
    struct Open { // small: there may be one for each character
        std::uint32_t begin;
        std::uint32_t separator;
    };

    void separate(std::size_t i) {
        if (!open_.empty() && open_.back().separator == none) {
            open_.back().separator = static_cast<std::uint32_t>(i);
        }
    }

    void close(std::size_t i) {
        if (open_.empty()) {
            return;
        }
        const Open field = open_.back();
        open_.pop_back();
        kept_[field.begin] = kept_[i] = true;
        if (field.separator != none) {
            kept_[field.separator] = true;
            marks_[i].data |= endHasSeparator;
        } else {
            marks_[i].data &= static_cast<std::uint8_t>(~endHasSeparator);
            needNoEntry_ += !listed_[field.begin] && !listed_[i] ? 2 : 0;
        }
    }

    std::vector<FieldMark>& marks_;
    const std::vector<bool>& listed_;
    std::vector<bool> kept_;
    int needNoEntry_ = 0;
    std::vector<Open> open_;
};

} // namespace

Bytes encodeFields(std::span<const FieldMark> marks, Cp length) {
    if (marks.empty()) {
        return {};
    }
    constexpr std::size_t cpSize = 4;
    const std::size_t fldsAt = cpSize * (marks.size() + 1);
    LittleEndianWriter plc;
    plc.zeros(fldsAt + fldSize * marks.size()); // room at once: there may be many
    for (std::size_t i = 0; i < marks.size(); ++i) {
        const FieldMark& mark = marks[i];
        const unsigned data = mark.character == fieldSeparator ? unusedData : mark.data;
        plc.patchU32(cpSize * i, mark.at);
        plc.patchU16(fldsAt + fldSize * i, mark.character | (data << 8));
    }
    plc.patchU32(fldsAt - cpSize, std::max(length, marks.back().at + 1));
    return plc.take();
}

std::vector<FieldMark> decodeFields(ByteView plcfld) {
    const Plc plc = decodePlc(plcfld, fldSize);
    std::vector<FieldMark> marks;
    for (std::size_t i = 0; i < plc.count(); ++i) {
        const ByteView fld = plc.element(i);
        marks.push_back(
            {plc.positions[i], static_cast<std::uint8_t>(fld[0] & characterMask), fld[1]});
    }
    const auto before = [](const FieldMark& a, const FieldMark& b) { return a.at < b.at; };
    const auto same = [](const FieldMark& a, const FieldMark& b) { return a.at == b.at; };
    std::stable_sort(marks.begin(), marks.end(), before);
    marks.erase(std::unique(marks.begin(), marks.end(), same), marks.end());
    return marks;
}

MatchedFields matchFields(std::span<const FieldMark> known, std::u16string_view text) {
    MatchedFields result;
    CharacterMarks all = characterMarks(known, text);
    FieldMatcher matcher(all);
    const std::vector<bool> kept = matcher.match();
    result.damage = all.unlisted - matcher.needNoEntry() + all.entriesWithoutMark;
    std::vector<FieldMark>& marks = all.marks;
    const auto strays = std::count(kept.begin(), kept.end(), false);
    result.strays.reserve(static_cast<std::size_t>(strays));
    std::size_t matched = 0;
    for (std::size_t i = 0; i < marks.size(); ++i) {
        if (kept[i]) {
            marks[matched++] = marks[i];
        } else {
            result.strays.push_back(marks[i].at);
        }
    }
    marks.resize(matched);
    result.marks = std::move(marks);
    return result;
}

void FieldInstructions::take(char16_t fieldCharacter) {
    if (fieldCharacter == fieldBegin) {
        open_.push_back(true);
        ++inside_;
    } else if (!open_.empty()) {
        inside_ -= open_.back() ? 1 : 0;
        open_.back() = false;
        if (fieldCharacter == fieldEnd) {
            open_.pop_back();
        }
    }
}

} // namespace qvnd::word
