#include "platform/word/engine/DocumentImport.h"

#include "platform/word/docfile/format/SpecialCharacters.h"
#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/docfile/text/BookmarkTables.h"
#include "platform/word/docfile/text/Fields.h"
#include "platform/word/docfile/text/RowRepair.h"
#include "platform/word/docfile/text/TableRepair.h"
#include "platform/word/engine/FieldCodes.h"
#include "platform/word/engine/ImportTables.h"
#include "platform/word/engine/LeftOut.h"
#include "platform/word/engine/StoryEdits.h"
#include "platform/word/engine/TextImport.h"
#include "platform/word/formatting/NameFolding.h"

#include <algorithm>
#include <optional>
#include <set>
#include <unordered_map>
#include <unordered_set>

namespace qvnd::word {

namespace {

// The others are for the headings that the contents name.
constexpr std::size_t mostBookmarksBrought = mostBookmarks - 2380;
constexpr std::uint8_t embedField = 58;
constexpr std::uint8_t controlField = 87;

using NewNames = std::unordered_map<std::u16string, std::u16string>; // by folded old name

bool isInTable(ByteView list) {
    const auto entry = findSprm(list, sprm::PFInTable);
    return entry && entry->operand[0] == 1;
}

// Works out what changes in the text of a story that comes in.
class TextChanges {
public:
    // In a text of its own, that of a note or a comment, the characters that repeat the reference
    // stay.
    TextChanges(const Story& story, bool ofItsOwn, TextImport& text, ImportLosses& losses)
        : story_(story), text_(text), losses_(losses), ofItsOwn_(ofItsOwn) {
        for (const Anchor& anchor : story.anchors) {
            kept_.insert(anchor.at);
        }
    }

    // The characters that stand for what does not come along.
    void removeAnchors() {
        Cp at = 0;
        for (const CharacterRun& run : story_.characters) {
            const TextImport::RunFacts& facts = text_.facts(run.properties);
            for (Cp i = 0; facts.special && i < run.length; ++i) {
                removeAnchor(at + i, facts);
            }
            at += run.length;
        }
    }

    // A cell's mark outside of any table only ends its paragraph; readers differ in what they
    // make of it.
    void repairCellMarks(const PropertyLists& lists) {
        Cp end = 0;
        for (const ParagraphRun& paragraph : story_.paragraphs) {
            end += paragraph.length;
            if (paragraph.length == 0 || story_.text[end - 1] != special::cellMark) {
                continue;
            }
            const auto [known, isNew] = inTable_.try_emplace(paragraph.properties, false);
            if (isNew) {
                known->second = isInTable(lists[paragraph.properties]);
            }
            if (!known->second) {
                edits.replace(end - 1, 1, u"\r");
            }
        }
    }

    // An object without its data leaves its picture behind: the field around it goes.
    void unwrapObjects(const std::vector<FieldPlace>& fields) {
        for (const FieldPlace& field : fields) {
            if (!lacksObject(field)) {
                continue;
            }
            ++losses_.objects;
            if (field.separator) {
                edits.remove(field.begin, *field.separator - field.begin + 1);
                edits.remove(field.end);
            } else {
                edits.remove(field.begin, field.end - field.begin + 1);
            }
        }
    }

    // References to bookmarks that got new names.
    void rename(const std::vector<FieldPlace>& fields, const NewNames& names) {
        const std::vector<std::vector<FieldWord>> words = fieldWords(story_);
        std::set<Cp> data = hyperlinkData();
        for (std::size_t i = 0; i < fields.size(); ++i) {
            for (const FieldWord& word : bookmarkWords(words[i])) {
                const auto found = names.find(foldedName(word.text));
                if (found != names.end()) {
                    edits.replace(word.at, static_cast<Cp>(word.text.size()), found->second);
                    removeHyperlinkData(fields[i], data);
                }
            }
        }
    }

    StoryEdits edits;

private:
    void removeAnchor(Cp at, const TextImport::RunFacts& facts) {
        const char16_t c = story_.text[at];
        if (c == special::picture && !facts.pictureThere && !facts.objectThere) {
            losses_.objects += facts.object ? 1 : 0;
            losses_.pictures += facts.data || facts.object ? 0 : 1;
            edits.remove(at);
        } else if (c == special::noteReference || c == special::commentReference ||
                   c == special::drawing) {
            if (kept_.contains(at) || (ofItsOwn_ && c != special::drawing)) {
                return;
            }
            losses_.drawings += c == special::drawing ? 1 : 0;
            edits.remove(at);
        }
    }

    // Whether the field is there for an object that is not.
    bool lacksObject(const FieldPlace& field) {
        if (field.separator && factsAt(*field.separator).objectThere) {
            return false;
        }
        return field.type == embedField || field.type == controlField ||
               (field.separator && factsAt(*field.separator).object);
    }

    // Characters that stand for data of a field.
    std::set<Cp> hyperlinkData() {
        std::set<Cp> places;
        for (Cp at = 0; at < story_.size(); ++at) {
            if (story_.text[at] == special::picture && factsAt(at).data) {
                places.insert(places.end(), at);
            }
        }
        return places;
    }

    // Data behind a hyperlink repeats the old name; the field's code says all that is needed. What
    // is removed goes out of `data` as well: fields may lie in each other.
    void removeHyperlinkData(const FieldPlace& field, std::set<Cp>& data) {
        const Cp codeEnd = field.separator.value_or(field.end);
        for (auto at = data.lower_bound(field.begin); at != data.end() && *at < codeEnd;) {
            edits.remove(*at);
            at = data.erase(at);
        }
    }

    const TextImport::RunFacts& factsAt(Cp at) {
        if (ends_.empty()) {
            Cp end = 0;
            for (const CharacterRun& run : story_.characters) {
                ends_.push_back(end += run.length);
            }
        }
        const auto run = std::upper_bound(ends_.begin(), ends_.end(), at) - ends_.begin();
        return text_.facts(story_.characters.at(static_cast<std::size_t>(run)).properties);
    }

    const Story& story_;
    TextImport& text_;
    ImportLosses& losses_;
    bool ofItsOwn_;
    std::unordered_map<PropertyListId, bool> inTable_; // what lists of paragraphs say
    std::unordered_set<Cp> kept_;                      // anchors of what comes along
    std::vector<Cp> ends_;                             // of the runs
};

// Gives the bookmarks names that are free in the target.
NewNames renamed(std::vector<Bookmark>& bookmarks, BookmarkNames& names) {
    NewNames changed;
    for (Bookmark& bookmark : bookmarks) {
        if (bookmark.comment) {
            continue;
        }
        std::u16string name = names.addUnique(bookmark.name);
        if (name != bookmark.name) {
            changed.emplace(foldedName(bookmark.name), name);
            bookmark.name = std::move(name);
        }
    }
    return changed;
}

bool hasHeaders(const HeaderSet& set) {
    return std::any_of(set.begin(), set.end(),
                       [](const SlicedText& header) { return !header.empty(); });
}

// Brings the stories of one source in, one after another.
class StoriesImport {
public:
    StoriesImport(DocumentTables& target, const DocumentContent& source, const NewNames& names,
                  int bookmarksWithoutRoom)
        : target_(target), source_(source), names_(names), tables_(target, source.tables),
          text_(tables_, target, source.tables), main_(joined(source.main)),
          firstShape_(target.shapes) {
        losses_.bookmarks = bookmarksWithoutRoom;
        losses_.sideStories = source.unread.sideStories;
        for (const Anchor& anchor : main_->anchors) {
            ++lossesOf(anchor.kind);
        }
        target.shapes += source.tables.shapes;
    }

    // The main story; afterwards moved() knows what became of its positions.
    Story main() {
        Story main = imported(*main_, false, edits_);
        bringAnchored(main.anchors);
        return main;
    }

    // Ranges of comments that came along name their comments in the target; the others go.
    void tieToComments(std::vector<Bookmark>& ranges) const {
        std::erase_if(ranges, [&](Bookmark& range) {
            const auto there =
                range.comment ? sideStories_.find(*range.comment) : sideStories_.end();
            if (there != sideStories_.end()) {
                range.comment = there->second;
            }
            return range.comment && there == sideStories_.end();
        });
    }

    Cp moved(Cp position) const { return edits_.moved(position); }

    std::vector<SectionRun> sections(Cp size) {
        std::vector<SectionRun> sections;
        Cp end = 0;
        Cp newStart = 0;
        for (const SectionRun& section : source_.sections) {
            end = std::min(end + section.length, main_->size());
            const Cp newEnd = moved(end);
            sections.push_back(
                {newEnd - newStart, tables_.rewriter().rewritten(section.properties)});
            newStart = newEnd;
        }
        if (sections.empty()) {
            sections.push_back({0, PropertyListId::empty});
        }
        sections.back().length += size - newStart;
        return sections;
    }

    // The last section shows the headers of the target, so its own stay behind.
    std::vector<HeaderSet> headers() {
        std::vector<HeaderSet> result;
        for (std::size_t i = 0; i + 1 < source_.sections.size() && i < source_.headers.size();
             ++i) {
            HeaderSet& set = result.emplace_back();
            for (std::size_t kind = 0; kind < set.size(); ++kind) {
                if (const SlicedText& header = source_.headers[i][kind]; !header.empty()) {
                    StoryEdits edits;
                    Story brought = imported(*joined(header), false, edits);
                    bringAnchored(brought.anchors);
                    set[kind] = slicesOf(std::move(brought));
                }
            }
        }
        const bool any = std::any_of(result.begin(), result.end(), hasHeaders);
        return any ? result : std::vector<HeaderSet>{};
    }

    // Completes the tables; nothing comes in behind it.
    std::vector<std::u16string> finish() {
        tables_.finish();
        losses_.lists = tables_.lists().withoutRoom();
        losses_.fonts = tables_.fonts().withoutRoom();
        losses_.styles = tables_.styles().withoutPlace();
        losses_.longFormats = text_.longFormats() + tables_.styles().withoutRoom();
        return leftOutOf(source_, losses_);
    }

private:
    int& lossesOf(AnchorKind kind) { return losses_.sideStories[static_cast<std::size_t>(kind)]; }

    // What the anchors name comes along, and they name it in the target.
    void bringAnchored(std::vector<Anchor>& anchors) {
        for (Anchor& anchor : anchors) {
            anchor.index = anchor.kind == AnchorKind::drawing ? bringDrawing(anchor.index)
                                                              : bringSideStory(anchor);
        }
    }

    std::uint32_t bringDrawing(std::uint32_t index) {
        Drawing brought = source_.tables.drawings.at(index);
        for (ShapeReference& reference : brought.references) {
            reference.index = targetOf(reference);
        }
        target_.drawings.push_back(std::move(brought));
        return static_cast<std::uint32_t>(target_.drawings.size() - 1);
    }

    std::uint32_t targetOf(const ShapeReference& reference) {
        switch (reference.kind) {
        case ShapeReference::Kind::shape:
        case ShapeReference::Kind::otherShape:
            return firstShape_ + reference.index;
        case ShapeReference::Kind::picture:
            return tables_.shapePicture(reference.index);
        case ShapeReference::Kind::text:
            return shapeText(reference.index);
        case ShapeReference::Kind::object:
            return tables_.object(reference.index).value_or(0);
        case ShapeReference::Kind::anchor:
            break;
        }
        return 0;
    }

    std::uint32_t shapeText(std::uint32_t index) {
        const auto next = static_cast<std::uint32_t>(target_.shapeTexts.size());
        const auto [known, isNew] = shapeTexts_.try_emplace(index, next);
        if (isNew) {
            ShapeText there = source_.tables.shapeTexts.at(index);
            StoryEdits edits;
            there.text = std::make_shared<const Story>(imported(*there.text, false, edits));
            for (Cp& at : there.breaks) {
                at = edits.moved(at);
            }
            target_.shapeTexts.push_back(std::move(there));
        }
        return known->second;
    }

    std::uint32_t bringSideStory(const Anchor& anchor) {
        SideStory brought = source_.tables.sideStories.at(anchor.index);
        brought.text = sideText(*brought.text);
        target_.sideStories.push_back(std::move(brought));
        --lossesOf(anchor.kind);
        const auto place = static_cast<std::uint32_t>(target_.sideStories.size() - 1);
        sideStories_.emplace(anchor.index, place);
        return place;
    }

    std::shared_ptr<const Story> sideText(const Story& text) {
        StoryEdits edits;
        return std::make_shared<const Story>(imported(text, true, edits));
    }

    Story imported(const Story& source, bool ofItsOwn, StoryEdits& edits) {
        const std::vector<FieldPlace> fields = fieldPlaces(source);
        TextChanges changes(source, ofItsOwn, text_, losses_);
        changes.removeAnchors();
        changes.repairCellMarks(source_.tables.lists);
        changes.unwrapObjects(fields);
        if (!names_.empty()) {
            changes.rename(fields, names_);
        }
        Story story = text_.imported(source);
        edits = std::move(changes.edits);
        edits.applyTo(story);
        if (!edits.empty()) {
            // A field that went may have taken marks of cells with it.
            repairTables(story, target_.lists);
            repairRows(story, target_.lists);
        }
        return story;
    }

    DocumentTables& target_;
    const DocumentContent& source_;
    const NewNames& names_;
    ImportTables tables_;
    TextImport text_;
    ImportLosses losses_;
    std::shared_ptr<const Story> main_;
    StoryEdits edits_;                                             // of the main story
    std::unordered_map<std::uint32_t, std::uint32_t> sideStories_; // index here, index there
    std::unordered_map<std::uint32_t, std::uint32_t> shapeTexts_;  // the same
    std::uint32_t firstShape_; // where the shapes of the source stand among the target's
};

void addReferences(const Story& story, std::unordered_set<std::u16string>& names) {
    for (const std::vector<FieldWord>& words : fieldWords(story)) {
        for (const FieldWord& word : bookmarkWords(words)) {
            names.insert(foldedName(word.text));
        }
    }
}

// The folded names of the bookmarks that fields of the document speak of.
std::unordered_set<std::u16string> referencesOf(const DocumentContent& source) {
    std::unordered_set<std::u16string> names;
    addReferences(*joined(source.main), names);
    for (const HeaderSet& set : source.headers) {
        for (const SlicedText& header : set) {
            addReferences(*joined(header), names);
        }
    }
    for (const SideStory& story : source.tables.sideStories) {
        addReferences(*story.text, names);
    }
    for (const ShapeText& text : source.tables.shapeTexts) {
        addReferences(*text.text, names);
    }
    return names;
}

// Those that nothing shows and nothing speaks of go first.
int leaveOutBeyondRoom(std::vector<Bookmark>& bookmarks, const BookmarkNames& names,
                       const DocumentContent& source) {
    const std::size_t room = mostBookmarksBrought - std::min(names.count(), mostBookmarksBrought);
    if (bookmarks.size() <= room) {
        return 0;
    }
    const std::unordered_set<std::u16string> references = referencesOf(source);
    return leaveOutBookmarks(bookmarks, room, [&](const Bookmark& bookmark) {
        return isHidden(bookmark) && !references.contains(foldedName(bookmark.name));
    });
}

} // namespace

DocumentBody importDocument(DocumentTables& target, BookmarkNames& names,
                            const DocumentContent& source, std::vector<std::u16string>& leftOut) {
    DocumentBody result;
    result.bookmarks = source.bookmarks;
    const int withoutRoom = leaveOutBeyondRoom(result.bookmarks, names, source);
    const NewNames newNames = renamed(result.bookmarks, names);
    StoriesImport stories(target, source, newNames, withoutRoom);
    result.main = slicesOf(stories.main());
    for (Bookmark& bookmark : result.bookmarks) {
        bookmark.start = stories.moved(bookmark.start);
        bookmark.end = stories.moved(bookmark.end);
    }
    stories.tieToComments(result.bookmarks);
    result.sections = stories.sections(lengthOf(result.main));
    result.headers = stories.headers();
    if (!result.headers.empty()) {
        result.headers.resize(result.sections.size());
    }
    leftOut = stories.finish();
    return result;
}

} // namespace qvnd::word
