#include "platform/word/engine/ContentsEntries.h"

#include "platform/word/docfile/text/BookmarkTables.h"
#include "platform/word/docfile/text/Fields.h"
#include "platform/word/engine/BookmarkImport.h"
#include "platform/word/engine/StyleLookup.h"
#include "platform/word/formatting/BuiltInStyles.h"
#include "platform/word/formatting/FormatResolver.h"
#include "platform/word/formatting/NameFolding.h"

#include <algorithm>
#include <map>
#include <memory>
#include <unordered_map>
#include <utility>

namespace qvnd::word {

namespace {

using LevelOfStyle = std::unordered_map<StyleIndex, int>;

void addHeadingStyles(const StyleSheet& styles, int upper, int lower, LevelOfStyle& levels) {
    for (int level = std::max(upper, 1); level <= std::min(lower, 9); ++level) {
        const auto number = static_cast<std::uint16_t>(sti::heading1 + level - 1);
        if (const auto style = styleNumbered(styles, number)) {
            levels[*style] = level;
        }
    }
}

// "name,level,name,level": what does not fit that form is skipped.
void addNamedStyles(const StyleSheet& styles, std::u16string_view names, LevelOfStyle& levels) {
    while (!names.empty()) {
        const std::size_t comma = names.find(u',');
        const std::u16string_view name = names.substr(0, comma);
        names.remove_prefix(comma == names.npos ? names.size() : comma + 1);
        const std::size_t end = names.find(u',');
        const std::u16string_view level = names.substr(0, end);
        names.remove_prefix(end == names.npos ? names.size() : end + 1);
        const auto style = styleNamed(styles, name);
        if (style && level.size() == 1 && level[0] >= u'1' && level[0] <= u'9') {
            levels[*style] = level[0] - u'0';
        }
    }
}

// Text that is hidden or marked as deleted is not listed. Headings are asked for in order: their
// runs are found from those of the heading before.
class VisibleText {
public:
    VisibleText(const WorkingStory& story, const DocumentTables& tables)
        : story_(story), formats_(tables) {}

    std::u16string of(Cp start, Cp end, StyleIndex style) {
        std::u16string result;
        for (const StorySlice& slice : story_.slicesOf(start, end)) {
            goTo(slice);
            append(result, slice, style);
        }
        return result;
    }

private:
    // To the run of the slice's first character.
    void goTo(const StorySlice& slice) {
        if (fragment_ != slice.fragment || slice.begin < runStart_) {
            fragment_ = slice.fragment;
            run_ = 0;
            runStart_ = 0;
        }
        const std::vector<CharacterRun>& runs = fragment_->characters;
        while (run_ < runs.size() && runStart_ + runs[run_].length <= slice.begin) {
            runStart_ += runs[run_++].length;
        }
    }

    void append(std::u16string& text, const StorySlice& slice, StyleIndex style) {
        const std::vector<CharacterRun>& runs = fragment_->characters;
        const Cp limit = slice.begin + slice.length;
        Cp start = runStart_;
        for (std::size_t i = run_; i < runs.size() && start < limit; ++i) {
            const Cp from = std::max(start, slice.begin);
            start += runs[i].length;
            if (!formats_.text(style, runs[i].properties).isUnseen()) {
                text.append(fragment_->text, from, std::min(start, limit) - from);
            }
        }
    }

    const WorkingStory& story_;
    FormatResolver formats_;
    std::shared_ptr<const Story> fragment_;
    std::size_t run_ = 0; // of the fragment
    Cp runStart_ = 0;
};

// Gives the entries the bookmarks that stand on their headings. Answers how many have none.
std::size_t nameThoseThere(WorkingDocument& document, std::vector<ContentsEntry>& entries) {
    std::map<std::pair<Cp, Cp>, std::u16string> present;
    for (const Bookmark& bookmark : document.bookmarks()) {
        if (bookmark.name.starts_with(u"_Toc")) {
            present.emplace(std::pair(bookmark.start, bookmark.end), bookmark.name);
        }
    }
    std::size_t missing = 0;
    for (ContentsEntry& entry : entries) {
        const auto known = present.find({entry.start, entry.end});
        entry.bookmark = known != present.end() ? known->second : u"";
        missing += known != present.end() ? 0 : 1;
    }
    return missing;
}

// Takes at most `count` hidden bookmarks away that neither fields nor entries speak of. Answers how
// many went.
std::size_t giveUpUnused(WorkingDocument& document, const std::vector<ContentsEntry>& entries,
                         std::size_t count) {
    auto used = namesInFields(document.content());
    for (const ContentsEntry& entry : entries) {
        used.insert(foldedName(entry.bookmark));
    }
    return std::erase_if(document.bookmarks(), [&](const Bookmark& bookmark) {
        const bool goes = count > 0 && !bookmark.comment && isHidden(bookmark) &&
                          !used.contains(foldedName(bookmark.name));
        count -= goes ? 1 : 0;
        return goes;
    });
}

// Numbers the bookmarks of headings as word processors do.
class HeadingNames {
public:
    explicit HeadingNames(BookmarkNames& names) : names_(names) {}

    std::u16string next() {
        std::u16string name;
        do {
            name = u"_Toc";
            for (const char digit : std::to_string(++number_)) {
                name += static_cast<char16_t>(digit);
            }
        } while (names_.contains(name));
        names_.add(name);
        return name;
    }

private:
    BookmarkNames& names_;
    std::uint32_t number_ = 200000000;
};

} // namespace

std::u16string entryText(std::u16string_view text) {
    std::u16string result;
    FieldInstructions codes;
    for (const char16_t c : text) {
        if (isFieldCharacter(c)) {
            codes.take(c);
        } else if (codes.isInside()) {
            continue;
        } else if (c == u'\t' || c == u'\v') {
            result += u' ';
        } else if (c == u'\x1E') {
            result += u'-'; // a hyphen that does not break
        } else if (c >= u' ') {
            result += c;
        }
    }
    const std::size_t first = result.find_first_not_of(u" \u3000");
    const std::size_t last = result.find_last_not_of(u" \u3000");
    return first == result.npos ? std::u16string() : result.substr(first, last - first + 1);
}

std::vector<ContentsEntry> contentsEntries(WorkingDocument& document,
                                           const TableOfContentsOptions& options) {
    LevelOfStyle levels;
    if (options.UseHeadingStyles) {
        addHeadingStyles(document.tables().styles, options.UpperHeadingLevel,
                         options.LowerHeadingLevel, levels);
    }
    addNamedStyles(document.tables().styles, options.AddedStyles, levels);

    std::vector<ContentsEntry> entries;
    VisibleText visible(document.main(), document.tables());
    document.main().forEachParagraph([&](Cp start, Cp end, const ParagraphLook& look) {
        const auto level = levels.find(look.style);
        if (level == levels.end()) {
            return;
        }
        ContentsEntry entry{level->second, start, end - 1, {}, {}};
        entry.text = entryText(visible.of(start, end - 1, look.style));
        if (!entry.text.empty()) {
            entries.push_back(std::move(entry));
        }
    });
    return entries;
}

ContentsLosses bookmarkEntries(WorkingDocument& document, std::vector<ContentsEntry>& entries) {
    ContentsLosses losses;
    const std::size_t missing = nameThoseThere(document, entries);
    std::size_t room = document.roomForBookmarks();
    if (missing > room) {
        losses.bookmarks = giveUpUnused(document, entries, missing - room);
        room += losses.bookmarks;
    }
    HeadingNames names(document.bookmarkNames());
    for (ContentsEntry& entry : entries) {
        if (!entry.bookmark.empty()) {
            continue;
        }
        if (room == 0) {
            ++losses.entries;
            continue;
        }
        --room;
        entry.bookmark = names.next();
        document.addBookmark({entry.bookmark, entry.start, entry.end, 0});
    }
    return losses;
}

} // namespace qvnd::word
