#include "platform/word/engine/DocumentOpening.h"

#include "platform/word/docfile/text/StoryRepair.h"
#include "platform/word/engine/BookmarkNames.h"
#include "platform/word/engine/ImportReferences.h"
#include "platform/word/engine/PropertyRewriter.h"
#include "platform/word/formatting/ListMembership.h"

#include <algorithm>
#include <span>
#include <unordered_set>
#include <utility>

namespace qvnd::word {

namespace {

// What the tables of a document have, at the places where they have it.
class OwnTables : public ImportReferences {
public:
    explicit OwnTables(DocumentTables& tables) : tables_(tables) {
        for (const ListDefinition& definition : tables.listDefinitions) {
            lists_.insert(definition.lsid);
        }
    }

    std::optional<std::uint16_t> font(std::uint16_t ftc) override {
        return ftc < tables_.fonts.size() ? std::optional(ftc) : std::nullopt;
    }
    std::optional<StyleIndex> style(StyleIndex istd, StyleKind kind) override {
        const auto& styles = tables_.styles.styles;
        const bool there = istd < styles.size() && styles[istd] && styles[istd]->kind == kind;
        return there ? std::optional(istd) : std::nullopt;
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
        return index < tables_.bulletPictures.size() ? std::optional(index) : std::nullopt;
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
    std::optional<std::uint16_t> nobody_;
};

class Opening {
public:
    explicit Opening(DocumentContent data)
        : data_(std::move(data)), before_(std::exchange(data_.tables.lists, {})),
          own_(data_.tables), rewriter_(before_, data_.tables.lists, own_) {}

    DocumentContent run() {
        openStyles();
        openLists();
        openPools();
        open(data_.main);
        for (SectionRun& section : data_.sections) {
            open(section.properties);
        }
        for (HeaderSet& set : data_.headers) {
            openAll(set);
        }
        openAll(data_.separators);
        nameBookmarks();
        data_.unread = {};
        return std::move(data_);
    }

private:
    DocumentTables& tables() { return data_.tables; }

    void open(PropertyListId& list) { list = rewriter_.rewritten(list); }

    void open(Story& story) {
        for (CharacterRun& run : story.characters) {
            open(run.properties);
        }
        for (ParagraphRun& run : story.paragraphs) {
            open(run.properties);
        }
        markSpecial(story, tables().lists);
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

    // Of two lists with one number the first counts.
    void openLists() {
        std::unordered_set<std::int32_t> seen;
        std::erase_if(tables().listDefinitions,
                      [&](const ListDefinition& list) { return !seen.insert(list.lsid).second; });
        for (ListDefinition& list : tables().listDefinitions) {
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

    // The first of equal names keeps it.
    void nameBookmarks() {
        BookmarkNames names;
        for (Bookmark& bookmark : data_.bookmarks) {
            if (!bookmark.comment) {
                bookmark.name = names.addUnique(bookmark.name);
            }
        }
    }

    DocumentContent data_;
    PropertyLists before_;
    OwnTables own_;
    PropertyRewriter rewriter_;
};

} // namespace

DocumentContent openedDocument(DocumentContent data) { return Opening(std::move(data)).run(); }

} // namespace qvnd::word
