#include "platform/word/engine/DocumentOpening.h"

#include "platform/word/docfile/styles/FontTable.h"
#include "platform/word/docfile/styles/ListTables.h"
#include "platform/word/docfile/styles/StyleSheetRepair.h"
#include "platform/word/docfile/text/BulletPictures.h"
#include "platform/word/docfile/text/Fields.h"
#include "platform/word/docfile/text/StoryRepair.h"
#include "platform/word/engine/BookmarkNames.h"
#include "platform/word/engine/FittingLists.h"
#include "platform/word/engine/ImportReferences.h"
#include "platform/word/engine/LeftOut.h"
#include "platform/word/engine/PropertyRewriter.h"
#include "platform/word/engine/RunFacts.h"
#include "platform/word/engine/StyleLookup.h"
#include "platform/word/formatting/ListMembership.h"

#include <algorithm>
#include <memory>
#include <span>
#include <unordered_set>
#include <utility>
#include <vector>

namespace qvnd::word {

namespace {

// What the tables of a document have, at the places where they have it.
class OwnTables : public ImportReferences {
public:
    // `lists` are those that the document was read with.
    OwnTables(DocumentTables& tables, const PropertyLists& lists) : tables_(tables) {
        for (const ListDefinition& definition : tables.listDefinitions) {
            lists_.insert(definition.lsid);
        }
        for (const PropertyListId picture : tables.bulletPictures) {
            bulletsThere_.push_back(isBulletPicture(lists[picture]));
        }
    }

    std::optional<std::uint16_t> font(std::uint16_t ftc) override {
        return ftc < tables_.fonts.size() ? std::optional(ftc) : std::nullopt;
    }
    std::optional<StyleIndex> style(StyleIndex istd, StyleKind kind) override {
        return hasStyle(tables_.styles, istd, kind) ? std::optional(istd) : std::nullopt;
    }
    std::uint16_t list(std::uint16_t ilfo) override {
        const std::uint16_t index = listIndexOf(ilfo);
        const auto& overrides = tables_.listOverrides;
        const bool there =
            index == 0 ? ilfo == listOfWord95
                       : index <= overrides.size() && lists_.contains(overrides[index - 1U].lsid);
        return there ? ilfo : noList;
    }
    std::optional<std::uint32_t> blob(std::uint32_t index) override {
        return there(tables_.blobs, index);
    }
    std::optional<std::uint32_t> object(std::uint32_t index) override {
        return there(tables_.objects, index);
    }
    std::optional<std::uint32_t> bulletPicture(std::uint32_t index) override {
        return index < bulletsThere_.size() && bulletsThere_[index] ? std::optional(index)
                                                                    : std::nullopt;
    }
    std::optional<std::uint16_t> author(std::uint16_t index) override {
        if (index < tables_.authors.size()) {
            return index;
        }
        // A revision of nobody stays a revision; Word calls nobody this.
        if (!nobody_) {
            nobody_ = static_cast<std::uint16_t>(tables_.authors.size());
            tables_.authors.emplace_back(u"Unknown");
        }
        return nobody_;
    }

private:
    template <class Shared>
    static std::optional<std::uint32_t> there(const std::vector<Shared>& pool,
                                              std::uint32_t index) {
        return index < pool.size() && pool[index] ? std::optional(index) : std::nullopt;
    }

    DocumentTables& tables_;
    std::unordered_set<std::int32_t> lists_;
    std::vector<bool> bulletsThere_; // by their places
    std::optional<std::uint16_t> nobody_;
};

class Opening {
public:
    explicit Opening(DocumentContent data)
        : data_(std::move(data)), before_(std::exchange(data_.tables.lists, {})),
          own_(data_.tables, before_), rewriter_(before_, data_.tables.lists, own_),
          facts_(data_.tables, before_), fitting_(data_.tables.lists) {}

    DocumentContent run(std::vector<std::u16string>* leftOut) {
        losses_.sideStories = data_.unread.sideStories;
        nameBookmarks(data_.bookmarks);
        openStyles();
        openLists();
        openPools();
        openMain();
        for (SectionRun& section : data_.sections) {
            open(section.properties);
            section.properties = fitting_.fittedSection(section.properties);
        }
        for (HeaderSet& set : data_.headers) {
            openAll(set);
        }
        openAll(data_.separators);
        if (leftOut != nullptr) {
            losses_.longFormats = fitting_.cut();
            losses_.divisions = namesDivisions(before_);
            *leftOut = leftOutOfOpened(data_, losses_);
        }
        data_.unread = {};
        return std::move(data_);
    }

private:
    DocumentTables& tables() { return data_.tables; }

    void open(PropertyListId& list) { list = rewriter_.rewritten(list); }

    // Answers the marks of notes and comments that belong to none.
    std::vector<Cp> open(Story& story) {
        std::vector<Cp> strayMarks = countMissing(story);
        for (CharacterRun& run : story.characters) {
            open(run.properties);
            run.properties = fitting_.fitted(run.properties);
        }
        for (ParagraphRun& run : story.paragraphs) {
            open(run.properties);
            run.properties = fitting_.fitted(run.properties);
        }
        nameBookmarks(story.bookmarks);
        settleMarks(story, tables().lists);
        return strayMarks;
    }

    // A mark without a note would show the number of nothing. In the text of a note it shows the
    // number of that note.
    void openMain() {
        for (StorySlice& slice : data_.main) {
            Story opened = *slice.fragment;
            const std::vector<Cp> strayMarks = open(opened);
            blankOut(opened, strayMarks, tables().lists);
            slice.fragment = std::make_shared<const Story>(std::move(opened));
        }
    }

    // Other characters that stand for nothing stay where they are.
    std::vector<Cp> countMissing(const Story& story) {
        std::vector<Cp> strayMarks;
        auto anchor = story.anchors.begin();
        auto field = story.fields.begin();
        Cp start = 0;
        for (const CharacterRun& run : story.characters) {
            const RunFacts& facts = facts_.of(run.properties);
            const Cp end = start + run.length;
            for (; field != story.fields.end() && field->at < end; ++field) {
                const bool withoutObject = field->character == fieldSeparator && facts.object;
                losses_.objects += withoutObject && !facts.objectThere ? 1 : 0;
            }
            for (Cp at = start; facts.special && at < end; ++at) {
                anchor = std::find_if(anchor, story.anchors.end(),
                                      [&](const Anchor& a) { return a.at >= at; });
                const bool isAnchored = anchor != story.anchors.end() && anchor->at == at;
                const Missing missing = missingAt(story.text[at], facts, isAnchored);
                count(missing, losses_);
                if (missing == Missing::note) {
                    strayMarks.push_back(at);
                }
            }
            start = end;
        }
        return strayMarks;
    }

    void open(std::shared_ptr<const Story>& story) {
        Story opened = *story;
        open(opened);
        story = std::make_shared<const Story>(std::move(opened));
    }

    void open(SlicedText& text) {
        for (StorySlice& slice : text) {
            open(slice.fragment);
        }
    }

    void openAll(std::span<SlicedText> texts) {
        for (SlicedText& text : texts) {
            open(text);
        }
    }

    void open(ListLevel& level) {
        open(level.paragraph);
        open(level.character);
    }

    void openStyles() {
        repairStyleNumbers(tables().styles);
        if (tables().fonts.empty()) { // the head of the style sheet names some
            tables().fonts.push_back(makeFont(u"Times New Roman"));
        }
        for (std::optional<StyleDefinition>& style : tables().styles.styles) {
            if (style) {
                open(style->paragraph);
                open(style->character);
                open(style->table);
            }
            if (style && style->original) {
                open(style->original->paragraph);
                open(style->original->character);
            }
        }
        for (std::uint16_t& font : tables().styles.defaultFonts) {
            font = own_.font(font).value_or(0);
        }
    }

    // Of two lists with one number the first counts; of two with one name the first keeps it.
    void openLists() {
        std::unordered_set<std::int32_t> seen;
        std::erase_if(tables().listDefinitions,
                      [&](const ListDefinition& list) { return !seen.insert(list.lsid).second; });
        UniqueNames names(longestListName);
        for (ListDefinition& list : tables().listDefinitions) {
            list.name = list.name.empty() ? u"" : names.addUnique(list.name);
            for (ListLevel& level : list.levels) {
                open(level);
            }
            for (StyleIndex& style : list.linkedStyles) {
                style = own_.style(style, StyleKind::paragraph).value_or(StyleDefinition::none);
            }
        }
        for (ListOverride& list : tables().listOverrides) {
            for (ListLevelOverride& level : list.levels) {
                if (level.level) {
                    open(*level.level);
                }
            }
        }
    }

    void openPools() {
        for (PropertyListId& picture : tables().bulletPictures) {
            open(picture);
        }
        for (SideStory& story : tables().sideStories) {
            open(story.text);
        }
        for (ShapeText& text : tables().shapeTexts) {
            open(text.text);
        }
    }

    // The first of equal names keeps it, and those of the main story come first.
    void nameBookmarks(std::vector<Bookmark>& bookmarks) {
        for (Bookmark& bookmark : bookmarks) {
            if (!bookmark.comment) {
                bookmark.name = names_.addUnique(bookmark.name);
            }
        }
    }

    DocumentContent data_;
    PropertyLists before_;
    OwnTables own_;
    PropertyRewriter rewriter_;
    RunFactsTable facts_;
    FittingLists fitting_;
    BookmarkNames names_;
    ImportLosses losses_;
};

} // namespace

DocumentContent openedDocument(DocumentContent data, std::vector<std::u16string>* leftOut) {
    return Opening(std::move(data)).run(leftOut);
}

} // namespace qvnd::word
