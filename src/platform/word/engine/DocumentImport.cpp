#include "platform/word/engine/DocumentImport.h"

#include "platform/word/docfile/document/DataBlobs.h"
#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/docfile/pictures/ShapeLinks.h"
#include "platform/word/docfile/text/RowRepair.h"
#include "platform/word/docfile/text/StoryRepair.h"
#include "platform/word/docfile/text/TableRepair.h"
#include "platform/word/engine/BookmarkImport.h"
#include "platform/word/engine/FieldCodes.h"
#include "platform/word/engine/ImportTables.h"
#include "platform/word/engine/LeftOut.h"
#include "platform/word/engine/SectionProperties.h"
#include "platform/word/engine/StoryEdits.h"
#include "platform/word/engine/TextChanges.h"
#include "platform/word/engine/TextImport.h"
#include "platform/word/formatting/NameFolding.h"

#include <algorithm>
#include <array>
#include <optional>
#include <unordered_map>
#include <utility>

namespace qvnd::word {

namespace {

// Brings the stories of one source in, one after another.
class StoriesImport {
public:
    StoriesImport(DocumentTables& target, const DocumentContent& source,
                  const BookmarkImport& bookmarks)
        : target_(target), source_(source), bookmarks_(bookmarks), tables_(target, source.tables),
          text_(tables_, target, source.tables), main_(joined(source.main)),
          firstShape_(target.shapes), firstOrder_(target.nextOrder) {
        losses_.bookmarks = bookmarks.withoutRoom();
        losses_.sideStories = source.unread.sideStories;
        for (const Anchor& anchor : main_->anchors) {
            ++lossesOf(anchor.kind);
        }
        target.shapes += source.tables.shapes;
        target.nextOrder += source.tables.nextOrder;
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
                {newEnd - newStart,
                 text_.fitting().fittedSection(tables_.rewriter().rewritten(section.properties))});
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
    void finish(ImportNotes& notes, ImportChanges& changes) {
        tables_.finish();
        losses_.lists = tables_.lists().withoutRoom();
        losses_.fonts = tables_.fonts().withoutRoom();
        losses_.styles = tables_.styles().withoutPlace();
        losses_.longFormats = text_.fitting().cut() + tables_.styles().withoutRoom();
        losses_.divisions = namesDivisions(source_.tables.lists);
        notes.leftOut = leftOutOf(source_, losses_);
        if (source_.unread.smartTags > 0) {
            notes.smartTags = u"智能标记未能带入，文字不变；其他文档中的智能标记不再逐一说明";
        }
        changes.bookmarks = bookmarks_.renamed();
        changes.styles = tables_.styles().renamed();
        changes.lists = tables_.lists().renamed();
        changes.footnotes = numbered_[static_cast<std::size_t>(AnchorKind::footnote)];
        changes.endnotes = numbered_[static_cast<std::size_t>(AnchorKind::endnote)];
        notes.changed = changesOf(changes);
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
        if (!bookmarks_.newNames().empty()) {
            renameLinks(brought, newBookmarkName());
        }
        losses_.shapePictures += static_cast<int>(
            std::erase_if(brought.references, [&](const ShapeReference& reference) {
                return reference.kind == ShapeReference::Kind::picture &&
                       !tables_.hasRoomForShapePicture(reference.index);
            }));
        for (ShapeReference& reference : brought.references) {
            reference.index = targetOf(reference);
        }
        brought.order += firstOrder_;
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
        numbered_[static_cast<std::size_t>(anchor.kind)] += brought.automatic ? 1 : 0;
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
        TextChanges changes(source, ofItsOwn, text_, losses_);
        changes.removeAnchors();
        changes.repairCellMarks(source_.tables.lists);
        changes.unwrapObjects();
        if (!bookmarks_.newNames().empty() || tables_.lists().hasNames()) {
            changes.rename(bookmarks_.newNames(), [this](std::u16string_view name) {
                return tables_.lists().newName(name);
            });
        }
        Story story = text_.imported(source);
        story.bookmarks = bookmarks_.aside(source);
        nameInData(story);
        edits = std::move(changes.edits);
        edits.applyTo(story);
        if (!edits.empty()) {
            // A field that went may have taken marks of cells with it.
            repairTables(story, target_.lists);
            repairRows(story, target_.lists);
        }
        return story;
    }

    NewBookmarkName newBookmarkName() const {
        return [this](std::u16string_view name) {
            const auto found = bookmarks_.newNames().find(foldedName(name));
            return found != bookmarks_.newNames().end() ? std::optional(found->second)
                                                        : std::nullopt;
        };
    }

    // The data of a form field bear the name of its bookmark, a picture and the data of a link that
    // of the bookmark that a click leads to.
    void nameInData(Story& story) {
        if (bookmarks_.newNames().empty()) {
            return;
        }
        for (CharacterRun& run : story.characters) {
            const auto [known, isNew] = renamedLists_.try_emplace(run.properties, run.properties);
            if (isNew) {
                known->second = withRenamedData(run.properties);
            }
            run.properties = known->second;
        }
    }

    // A list of the target, with other data where those that it leads to name a bookmark anew.
    PropertyListId withRenamedData(PropertyListId list) {
        constexpr std::uint32_t none = 0xFFFFFFFF;
        const ByteView properties = target_.lists[list];
        const std::uint32_t blob = sprmValue(properties, sprm::CPicLocation, none);
        if (blob >= target_.blobs.size() || !target_.blobs[blob]) {
            return list;
        }
        const auto [known, isNew] = renamedBlobs_.try_emplace(blob, blob);
        if (isNew) {
            known->second = renamedBlob(blob);
        }
        return known->second == blob ? list
                                     : target_.lists.intern(withSprm32(
                                           properties, sprm::CPicLocation, known->second));
    }

    // The target's blob with the new name; the same one when the name stays.
    std::uint32_t renamedBlob(std::uint32_t blob) {
        std::optional<Bytes> data = withNewNames(*target_.blobs[blob]);
        if (!data) {
            return blob;
        }
        target_.blobs.push_back(std::make_shared<const Bytes>(*std::move(data)));
        return static_cast<std::uint32_t>(target_.blobs.size() - 1);
    }

    std::optional<Bytes> withNewNames(ByteView data) const {
        const auto field = formFieldName(data);
        if (!field) {
            return withRenamedLinks(data, newBookmarkName());
        }
        const auto name = newBookmarkName()(*field);
        return name ? std::optional(withFormFieldName(data, *name)) : std::nullopt;
    }

    DocumentTables& target_;
    const DocumentContent& source_;
    const BookmarkImport& bookmarks_;
    ImportTables tables_;
    TextImport text_;
    ImportLosses losses_;
    std::array<int, anchorKinds> numbered_{}; // side stories that bear a number
    std::shared_ptr<const Story> main_;
    StoryEdits edits_;                                                // of the main story
    std::unordered_map<std::uint32_t, std::uint32_t> sideStories_;    // index here, index there
    std::unordered_map<std::uint32_t, std::uint32_t> shapeTexts_;     // the same
    std::unordered_map<PropertyListId, PropertyListId> renamedLists_; // of the target
    std::unordered_map<std::uint32_t, std::uint32_t> renamedBlobs_;   // the same
    std::uint32_t firstShape_; // where the shapes of the source stand among the target's
    std::uint32_t firstOrder_; // and where its drawings lie: over all of the target's
};

// A section in front of the first headers that come along goes on with the page numbers of the
// text in front, and so does the last one.
void noteGivenUpNumbers(const DocumentContent& source, const DocumentBody& brought,
                        ImportChanges& changes) {
    const std::size_t firstKept = firstSectionWithHeaders(brought);
    for (std::size_t i = 0; i < source.sections.size(); ++i) {
        const ByteView section = source.tables.lists[source.sections[i].properties];
        if (i < firstKept || i + 1 == source.sections.size()) {
            changes.pages = changes.pages || sprmValue(section, sprm::SFPgnRestart, 0) != 0;
            changes.pageForm = changes.pageForm || sprmValue(section, sprm::SNfcPgn, 0) != 0;
        }
    }
}

} // namespace

bool hasHeaders(const HeaderSet& set) {
    return std::any_of(set.begin(), set.end(),
                       [](const SlicedText& header) { return !header.empty(); });
}

std::size_t firstSectionWithHeaders(const DocumentBody& body) {
    const auto found = std::find_if(body.headers.begin(), body.headers.end(), hasHeaders);
    return found != body.headers.end() ? static_cast<std::size_t>(found - body.headers.begin())
                                       : body.sections.size();
}

void ImportNotes::tell(ImportReport& report, const std::filesystem::path& path,
                       bool& areSmartTagsTold) const {
    for (const std::u16string& what : leftOut) {
        report.notCarried(path, what);
    }
    if (!smartTags.empty() && !std::exchange(areSmartTagsTold, true)) {
        report.notCarried(path, smartTags);
    }
    for (const std::u16string& what : changed) {
        report.changed(path, what);
    }
}

DocumentBody importDocument(DocumentTables& target, BookmarkNames& names,
                            const DocumentContent& source, ImportNotes& notes) {
    ImportChanges changes;
    DocumentBody result;
    BookmarkImport bookmarks(source, names);
    StoriesImport stories(target, source, bookmarks);
    result.bookmarks = bookmarks.takeMain();
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
    noteGivenUpNumbers(source, result, changes);
    stories.finish(notes, changes);
    return result;
}

} // namespace qvnd::word
