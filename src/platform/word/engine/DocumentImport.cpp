#include "platform/word/engine/DocumentImport.h"

#include "platform/word/docfile/Fields.h"
#include "platform/word/docfile/Sprm.h"
#include "platform/word/docfile/SprmCodes.h"
#include "platform/word/engine/FieldCodes.h"
#include "platform/word/engine/ImportTables.h"
#include "platform/word/engine/LeftOut.h"
#include "platform/word/engine/NameFolding.h"
#include "platform/word/engine/StoryEdits.h"
#include "platform/word/engine/TextImport.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

namespace qvnd::word {

namespace {

constexpr char16_t picture = 0x01;
constexpr char16_t noteReference = 0x02;
constexpr char16_t commentReference = 0x05;
constexpr char16_t cellMark = 0x07;
constexpr char16_t drawing = 0x08;

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
    TextChanges(const DocumentData& source, TextImport& text, ImportLosses& losses)
        : story_(source.main), text_(text), losses_(losses) {
        for (const FloatingPicture& one : source.floatingPictures) {
            floating_.insert(one.at);
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
            if (paragraph.length > 0 && story_.text[end - 1] == cellMark &&
                !isInTable(lists[paragraph.properties])) {
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
        for (const FieldPlace& field : fields) {
            for (const FieldWord& word : bookmarkWords(fieldWords(story_, field))) {
                const auto found = names.find(foldedName(word.text));
                if (found != names.end()) {
                    edits.replace(word.at, static_cast<Cp>(word.text.size()), found->second);
                    removeHyperlinkData(field);
                }
            }
        }
    }

    StoryEdits edits;

private:
    void removeAnchor(Cp at, const TextImport::RunFacts& facts) {
        const char16_t c = story_.text[at];
        if (c == picture && !facts.pictureThere && !facts.objectThere) {
            losses_.objects += facts.object ? 1 : 0;
            losses_.pictures += facts.data || facts.object ? 0 : 1;
            edits.remove(at);
        } else if (c == noteReference || c == commentReference || c == drawing) {
            if (c == drawing && floating_.contains(at)) {
                return;
            }
            losses_.drawings += c == drawing ? 1 : 0;
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

    // Data behind a hyperlink repeats the old name; the field's code says all that is needed.
    void removeHyperlinkData(const FieldPlace& field) {
        for (Cp at = field.begin + 1; at < field.separator.value_or(field.end); ++at) {
            if (story_.text[at] == picture && factsAt(at).data) {
                edits.remove(at);
            }
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
    std::unordered_set<Cp> floating_; // anchors of pictures that come along
    std::vector<Cp> ends_;            // of the runs
};

// Gives the bookmarks names that are free in the target.
NewNames renamed(std::vector<Bookmark>& bookmarks, BookmarkNames& names) {
    NewNames changed;
    for (Bookmark& bookmark : bookmarks) {
        std::u16string name = names.addUnique(bookmark.name);
        if (name != bookmark.name) {
            changed.emplace(foldedName(bookmark.name), name);
            bookmark.name = std::move(name);
        }
    }
    return changed;
}

std::vector<SectionRun> importedSections(const DocumentData& source, const StoryEdits& edits,
                                         PropertyRewriter& rewriter, Cp size) {
    std::vector<SectionRun> sections;
    Cp end = 0;
    Cp newStart = 0;
    for (const SectionRun& section : source.sections) {
        end = std::min(end + section.length, source.main.size());
        const Cp newEnd = edits.moved(end);
        sections.push_back({newEnd - newStart, rewriter.rewritten(section.properties)});
        newStart = newEnd;
    }
    if (sections.empty()) {
        sections.push_back({0, PropertyListId::empty});
    }
    sections.back().length += size - newStart;
    return sections;
}

} // namespace

ImportedText importDocument(DocumentTables& target, BookmarkNames& names,
                            const DocumentData& source) {
    ImportTables tables(target, source.tables);
    TextImport text(tables, target, source.tables);
    ImportLosses losses;
    ImportedText result;
    result.bookmarks = source.bookmarks;
    const NewNames newNames = renamed(result.bookmarks, names);

    const std::vector<FieldPlace> fields = fieldPlaces(source.main);
    TextChanges changes(source, text, losses);
    changes.removeAnchors();
    changes.repairCellMarks(source.tables.lists);
    changes.unwrapObjects(fields);
    if (!newNames.empty()) {
        changes.rename(fields, newNames);
    }
    Story story = text.imported(source.main);
    text.putInLine(source.floatingPictures, story);
    losses.madeInline = static_cast<int>(source.floatingPictures.size());
    changes.edits.applyTo(story);
    for (Bookmark& bookmark : result.bookmarks) {
        bookmark.start = changes.edits.moved(bookmark.start);
        bookmark.end = changes.edits.moved(bookmark.end);
    }
    result.sections = importedSections(source, changes.edits, tables.rewriter(), story.size());
    result.text = std::make_shared<Story>(std::move(story));
    tables.finish();
    losses.lists = tables.lists().withoutRoom();
    result.leftOut = leftOutOf(source, losses);
    return result;
}

} // namespace qvnd::word
