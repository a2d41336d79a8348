#include "platform/word/engine/WorkingStory.h"

#include "platform/word/engine/StoryBuilder.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

namespace qvnd::word {

namespace {

class RememberedChange {
public:
    explicit RememberedChange(const PropertyChange& change) : change_(change) {}

    PropertyListId operator()(PropertyListId id) {
        const auto [known, isNew] = known_.try_emplace(id, id);
        if (isNew) {
            known->second = change_(id);
        }
        return known->second;
    }

private:
    const PropertyChange& change_;
    std::unordered_map<PropertyListId, PropertyListId> known_;
};

class RememberedLook {
public:
    explicit RememberedLook(const LookChange& change) : change_(change) {}

    ParagraphLook operator()(const ParagraphLook& look) {
        const auto key =
            (std::uint64_t{look.style} << 32) | static_cast<std::uint32_t>(look.properties);
        const auto [known, isNew] = known_.try_emplace(key, look);
        if (isNew) {
            known->second = change_(look);
        }
        return known->second;
    }

private:
    const LookChange& change_;
    std::unordered_map<std::uint64_t, ParagraphLook> known_;
};

} // namespace

WorkingStory::WorkingStory(SlicedText& slices, PositionObserver* observer)
    : slices_(slices), observer_(observer) {
    for (const StorySlice& slice : slices_) {
        size_ += slice.length;
    }
}

WorkingStory::Place WorkingStory::placeOf(Cp at) const {
    if (at < size_ / 2) {
        Place place;
        while (place.start + slices_[place.slice].length <= at) {
            place.start += slices_[place.slice].length;
            ++place.slice;
        }
        return place;
    }
    Place place{slices_.size(), size_};
    while (place.start > at) {
        --place.slice;
        place.start -= slices_[place.slice].length;
    }
    return place;
}

char16_t WorkingStory::at(Cp position) const {
    const Place place = placeOf(position);
    const StorySlice& slice = slices_[place.slice];
    return slice.fragment->text[slice.begin + position - place.start];
}

std::u16string WorkingStory::text(Cp start, Cp end) const {
    std::u16string result;
    for (const StorySlice& slice : slicesOf(start, end)) {
        result.append(slice.fragment->text, slice.begin, slice.length);
    }
    return result;
}

SlicedText WorkingStory::slicesOf(Cp start, Cp end) const {
    SlicedText result;
    if (start >= end) {
        return result;
    }
    Place place = placeOf(start);
    for (Cp at = start; at < end; ++place.slice) {
        StorySlice slice = slices_[place.slice];
        slice.begin += at - place.start;
        slice.length = std::min(slice.length - (at - place.start), end - at);
        at += slice.length;
        place.start = at;
        result.push_back(std::move(slice));
    }
    return result;
}

PropertyListId WorkingStory::characterProperties(Cp at) const {
    const Place place = placeOf(at);
    const StorySlice& slice = slices_[place.slice];
    return characterPropertiesAt(*slice.fragment, slice.begin + at - place.start);
}

ParagraphLook WorkingStory::paragraphLook(Cp at) const {
    const Cp mark = paragraphEnd(at) - 1;
    const Place place = placeOf(mark);
    const StorySlice& slice = slices_[place.slice];
    return paragraphLookAt(*slice.fragment, slice.begin + mark - place.start);
}

Cp WorkingStory::paragraphStart(Cp at) const {
    if (at == 0) {
        return 0;
    }
    Place place = placeOf(at - 1);
    Cp reach = at - place.start; // characters of the slice in front of `at`
    while (true) {
        const StorySlice& slice = slices_[place.slice];
        const auto end = lastParagraphEnd(*slice.fragment, slice.begin, slice.begin + reach);
        if (end) {
            return place.start + (*end - slice.begin);
        }
        if (place.slice == 0) {
            return 0;
        }
        --place.slice;
        reach = slices_[place.slice].length;
        place.start -= reach;
    }
}

Cp WorkingStory::paragraphEnd(Cp at) const {
    Place place = placeOf(at);
    Cp from = at - place.start;
    for (; place.slice < slices_.size(); ++place.slice) {
        const StorySlice& slice = slices_[place.slice];
        const auto end =
            firstParagraphEnd(*slice.fragment, slice.begin + from, slice.begin + slice.length);
        if (end) {
            return place.start + (*end - slice.begin);
        }
        place.start += slice.length;
        from = 0;
    }
    return size_;
}

void WorkingStory::forEachParagraph(const ParagraphVisitor& visit) const {
    Cp paragraph = 0;
    Cp sliceStart = 0;
    for (const StorySlice& slice : slices_) {
        const Cp sliceEnd = slice.begin + slice.length;
        Cp end = 0;
        for (const ParagraphRun& run : slice.fragment->paragraphs) {
            end += run.length;
            if (end > sliceEnd) {
                break;
            }
            if (end > slice.begin && endsParagraph(slice.fragment->text[end - 1])) {
                const Cp place = sliceStart + (end - slice.begin);
                visit(paragraph, place, {run.style, run.properties});
                paragraph = place;
            }
        }
        sliceStart += slice.length;
    }
}

void WorkingStory::forEachFieldMark(const FieldVisitor& visit) const {
    Cp sliceStart = 0;
    for (const StorySlice& slice : slices_) {
        for (const FieldMark& mark : slice.fragment->fields) {
            if (mark.at >= slice.begin && mark.at < slice.begin + slice.length) {
                visit(sliceStart + (mark.at - slice.begin), mark);
            }
        }
        sliceStart += slice.length;
    }
}

std::size_t WorkingStory::splitAt(Cp at) {
    const Place place = placeOf(at);
    if (place.slice == slices_.size() || place.start == at) {
        return place.slice;
    }
    StorySlice& left = slices_[place.slice];
    const Cp kept = at - place.start;
    StorySlice right{left.fragment, left.begin + kept, left.length - kept};
    left.length = kept;
    slices_.insert(slices_.begin() + static_cast<std::ptrdiff_t>(place.slice + 1),
                   std::move(right));
    return place.slice + 1;
}

Story& WorkingStory::openFragment() {
    if (!open_) {
        open_ = std::make_shared<Story>();
    }
    return *open_;
}

void WorkingStory::insertOpenTail(Cp at, Cp length) {
    const std::size_t index = splitAt(at);
    const Cp begin = open_->size() - length;
    grown(at, length);
    if (index > 0) {
        StorySlice& before = slices_[index - 1];
        if (before.fragment == open_ && before.begin + before.length == begin) {
            before.length += length;
            return;
        }
    }
    slices_.insert(slices_.begin() + static_cast<std::ptrdiff_t>(index),
                   StorySlice{open_, begin, length});
}

void WorkingStory::insertText(Cp at, std::u16string_view text, PropertyListId properties) {
    if (text.empty()) {
        return;
    }
    announce(at);
    StoryBuilder(openFragment()).text(text, properties);
    insertOpenTail(at, static_cast<Cp>(text.size()));
}

void WorkingStory::insertMark(Cp at, char16_t mark, ParagraphLook look, PropertyListId properties) {
    announce(at);
    StoryBuilder(openFragment()).mark(mark, look, properties);
    insertOpenTail(at, 1);
}

void WorkingStory::insertFragment(Cp at, std::shared_ptr<const Story> fragment) {
    insert(at, word::slicesOf(std::move(fragment)));
}

void WorkingStory::insert(Cp at, const SlicedText& text) {
    if (text.empty()) {
        return;
    }
    announce(at);
    const std::size_t index = splitAt(at);
    slices_.insert(slices_.begin() + static_cast<std::ptrdiff_t>(index), text.begin(), text.end());
    grown(at, lengthOf(text));
}

void WorkingStory::announce(Cp at) {
    if (observer_ != nullptr) {
        observer_->changing(at);
    }
}

void WorkingStory::replaceMark(Cp at, char16_t mark) {
    announce(at);
    const std::size_t index = splitAt(at);
    splitAt(at + 1);
    StorySlice& slice = slices_[index];
    Story part = partOf(*slice.fragment, slice.begin, 1);
    part.text[0] = mark;
    slice = {std::make_shared<const Story>(std::move(part)), 0, 1};
}

void WorkingStory::grown(Cp at, Cp length) {
    size_ += length;
    if (observer_ != nullptr) {
        observer_->inserted(at, length);
    }
}

void WorkingStory::erase(Cp start, Cp end) {
    if (start >= end) {
        return;
    }
    announce(start);
    const std::size_t first = splitAt(start);
    const std::size_t last = splitAt(end);
    slices_.erase(slices_.begin() + static_cast<std::ptrdiff_t>(first),
                  slices_.begin() + static_cast<std::ptrdiff_t>(last));
    size_ -= end - start;
    if (observer_ != nullptr) {
        observer_->erased(start, end);
    }
}

void WorkingStory::replace(Cp start, Cp end, std::shared_ptr<const Story> fragment,
                           const PositionMap& moved) {
    announce(start);
    const std::size_t first = splitAt(start);
    const std::size_t last = splitAt(end);
    const auto place = slices_.erase(slices_.begin() + static_cast<std::ptrdiff_t>(first),
                                     slices_.begin() + static_cast<std::ptrdiff_t>(last));
    const Cp length = fragment->size();
    slices_.insert(place, StorySlice{std::move(fragment), 0, length});
    size_ = size_ - (end - start) + length;
    if (observer_ != nullptr) {
        observer_->replaced(moved);
    }
}

void WorkingStory::changeCharacters(Cp start, Cp end, const PropertyChange& change) {
    RememberedChange changed(change);
    const std::size_t first = splitAt(start);
    const std::size_t last = splitAt(end);
    for (std::size_t i = first; i < last; ++i) {
        Story part = partOf(*slices_[i].fragment, slices_[i].begin, slices_[i].length);
        for (CharacterRun& run : part.characters) {
            run.properties = changed(run.properties);
        }
        slices_[i] = {std::make_shared<const Story>(std::move(part)), 0, slices_[i].length};
    }
}

void WorkingStory::changeRuns(Cp start, Cp end, const std::function<bool(Story&)>& change) {
    Story part = *joined(slicesOf(start, end));
    if (!change(part)) {
        return;
    }
    const std::size_t first = splitAt(start);
    const std::size_t last = splitAt(end);
    const auto place = slices_.erase(slices_.begin() + static_cast<std::ptrdiff_t>(first),
                                     slices_.begin() + static_cast<std::ptrdiff_t>(last));
    slices_.insert(place,
                   StorySlice{std::make_shared<const Story>(std::move(part)), 0, end - start});
}

void WorkingStory::changeParagraphs(Cp start, Cp end, const LookChange& change) {
    RememberedLook changed(change);
    const std::size_t first = splitAt(start);
    const std::size_t last = splitAt(end);
    for (std::size_t i = first; i < last; ++i) {
        Story part = partOf(*slices_[i].fragment, slices_[i].begin, slices_[i].length);
        for (ParagraphRun& run : part.paragraphs) {
            const ParagraphLook look = changed({run.style, run.properties});
            run.style = look.style;
            run.properties = look.properties;
        }
        slices_[i] = {std::make_shared<const Story>(std::move(part)), 0, slices_[i].length};
    }
}

} // namespace qvnd::word
