#pragma once

#include "platform/word/docfile/document/DocumentContent.h"
#include "platform/word/docfile/document/StoryParts.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace qvnd::word {

// Names another property list for a given one; asked once for each distinct list.
using PropertyChange = std::function<PropertyListId(PropertyListId)>;
using LookChange = std::function<ParagraphLook(const ParagraphLook&)>;

// Where a position of a story lies behind a change of its text.
using PositionMap = std::function<Cp(Cp)>;

// Hears of every change of positions.
class PositionObserver {
public:
    virtual ~PositionObserver() = default;
    // Before something is inserted there, or erased from there on.
    virtual void changing(Cp at) = 0;
    // After it was done.
    virtual void inserted(Cp at, Cp length) = 0;
    virtual void erased(Cp start, Cp end) = 0;
    virtual void replaced(const PositionMap& moved) = 0;
};

// The text of one story under work: slices of fragments that nobody changes any more. Text that is
// typed goes into one open fragment, which grows until it is sealed. Positions are checked by the
// caller; a story always ends in a paragraph mark, and nobody inserts behind that.
// Finding a place takes longer with its distance from the story's nearer end, and no operation
// looks at text outside of its range.
class WorkingStory {
public:
    // Works on `slices`, which must outlive this, as must the observer.
    explicit WorkingStory(SlicedText& slices, PositionObserver* observer = nullptr);

    Cp size() const { return size_; }

    char16_t at(Cp position) const;
    std::u16string text(Cp start, Cp end) const;
    PropertyListId characterProperties(Cp at) const;
    // Of the paragraph that holds the character at `at`.
    ParagraphLook paragraphLook(Cp at) const;
    Cp paragraphStart(Cp at) const;
    // Behind the mark of the paragraph that holds the character at `at`.
    Cp paragraphEnd(Cp at) const;
    SlicedText slicesOf(Cp start, Cp end) const;
    // Start, end behind the mark, look; in order, in time linear in the fragments.
    using ParagraphVisitor = std::function<void(Cp, Cp, const ParagraphLook&)>;
    void forEachParagraph(const ParagraphVisitor& visit) const;
    // With the mark's place in the story.
    using FieldVisitor = std::function<void(Cp, const FieldMark&)>;
    void forEachFieldMark(const FieldVisitor& visit) const;

    void insertText(Cp at, std::u16string_view text, PropertyListId properties);
    void insertMark(Cp at, char16_t mark, ParagraphLook look, PropertyListId properties);
    void insert(Cp at, const SlicedText& text);
    void insertFragment(Cp at, std::shared_ptr<const Story> fragment);
    void erase(Cp start, Cp end);
    // Puts another version of the text in place of [start, end): what stands in it keeps its place
    // there. `moved` tells where every position of the story lies then; those up to `start` stay.
    void replace(Cp start, Cp end, std::shared_ptr<const Story> fragment, const PositionMap& moved);
    // Another character in place of the one that ends a paragraph at `at`; its look stays.
    void replaceMark(Cp at, char16_t mark);

    void changeCharacters(Cp start, Cp end, const PropertyChange& change);
    // Hands over what lies in [start, end) as one story, of which the runs of characters may
    // change. Where `change` answers false, nothing does.
    void changeRuns(Cp start, Cp end, const std::function<bool(Story&)>& change);
    // Changes the paragraphs whose marks lie in [start, end).
    void changeParagraphs(Cp start, Cp end, const LookChange& change);

    // What is typed from here on goes into a new fragment.
    void seal() { open_.reset(); }

private:
    struct Place {
        std::size_t slice = 0;
        Cp start = 0; // where that slice begins in the story
    };

    Place placeOf(Cp at) const;
    std::size_t splitAt(Cp at);
    void announce(Cp at);
    // Opens room for `length` characters that were just added to the open fragment.
    void insertOpenTail(Cp at, Cp length);
    Story& openFragment();
    void grown(Cp at, Cp length);

    SlicedText& slices_;
    PositionObserver* observer_;
    std::shared_ptr<Story> open_;
    Cp size_ = 0;
};

} // namespace qvnd::word
