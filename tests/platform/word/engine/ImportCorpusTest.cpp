#include "platform/word/docfile/container/FormatError.h"
#include "platform/word/docfile/reader/DocumentReader.h"
#include "platform/word/docfile/text/DocumentText.h"
#include "platform/word/engine/DocumentInsertion.h"
#include "platform/word/engine/ImportFixture.h"
#include "platform/word/engine/NormalTemplate.h"
#include "platform/word/formatting/StyleProperties.h"
#include "support/Corpus.h"

#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <string>

using namespace qvnd::word;
using namespace qvnd::word::importing;
using qvnd::test::foreignDocuments;

namespace {

using Description = std::map<SprmOpcode, std::string>;

std::string textOf(std::u16string_view text) {
    std::string result;
    for (const char16_t c : text) {
        result += std::to_string(c) + " ";
    }
    return result;
}

// Works out what text of a document looks like, in words that mean the same in any document.
class Looks {
public:
    explicit Looks(const DocumentTables& tables)
        : tables_(tables), levels_(tables),
          styles_(
              tables.styles, tables.styles.defaultFonts,
              [&](PropertyListId id) { return tables.lists[id]; }, levels_) {}

    Description paragraph(const ParagraphRun& run) {
        ResolvedProperties look = styles_.paragraph(run.style);
        look.lay(tables_.lists[run.properties], levels_);
        Description result = described(look);
        for (const auto& [position, tbd] : look.tabStops()) {
            result[sprm::PChgTabsPapx] +=
                std::to_string(position) + ":" + std::to_string(tbd) + " ";
        }
        return result;
    }
    Description character(StyleIndex paragraph, PropertyListId list) {
        const auto named = findSprm(tables_.lists[list], sprm::CIstd);
        StyleIndex above = StyleDefinition::none;
        if (named) {
            above = static_cast<StyleIndex>(named->operand[0] | (named->operand[1] << 8));
        }
        const bool valid = above < tables_.styles.styles.size() && tables_.styles.styles[above] &&
                           tables_.styles.styles[above]->kind == StyleKind::character;
        ResolvedProperties look =
            styles_.character(paragraph, valid ? above : StyleDefinition::none);
        look.lay(tables_.lists[list], levels_);
        return described(look);
    }

private:
    Description described(const ResolvedProperties& look) {
        Description result;
        for (const auto& [property, entries] : look.entries()) {
            // Of several spellings the last has the word.
            const SprmView last = parseSprms(entries).sprms.back();
            if (last.opcode == sprm::PIlvl && look.list() == 0) {
                continue;
            }
            const std::string value = valueOf(last, look);
            const auto plain = defaultEntry(last.opcode);
            const bool byDefault =
                !value.starts_with("font") && plain && bytesOf(last.whole) == *plain;
            if (!value.empty() && !byDefault) {
                result[property] = value;
            }
        }
        return result;
    }
    std::string valueOf(const SprmView& entry, const ResolvedProperties& look) {
        const unsigned index =
            entry.operand.size() < 2
                ? 0U
                : static_cast<unsigned>(entry.operand[0] | (entry.operand[1] << 8));
        switch (entry.opcode) {
        case sprm::CRgFtc0:
        case sprm::CRgFtc1:
        case sprm::CRgFtc2:
        case sprm::CFtcBi:
        case sprm::CFtc:
            return index < tables_.fonts.size() ? "font " + foldedText(tables_.fonts[index].name)
                                                : std::string();
        case sprm::PIlfo: {
            const ListLevel* level = levels_.level(look.list(), look.listLevel());
            return level != nullptr
                       ? "list " + std::to_string(level->head[4]) + " " + textOf(level->text)
                       : std::string();
        }
        case sprm::PAnld80:
            return "old numbering";
        default:
            return plainly(entry);
        }
    }
    // An automatic colour, whatever the spelling, is the default; colours by number are theirs.
    static std::string plainly(const SprmView& entry) {
        const bool isColour = entry.opcode == sprm::CIco || entry.opcode == sprm::CCv;
        for (unsigned colour = 0; isColour && colour <= 16; ++colour) {
            if (sameEffect(entry.whole, sprm8(sprm::CIco, colour))) {
                return colour == 0 ? std::string() : "colour " + std::to_string(colour);
            }
        }
        return textOf(std::u16string(entry.operand.begin(), entry.operand.end()));
    }
    static std::string foldedText(const std::u16string& name) {
        std::u16string folded = name;
        for (char16_t& c : folded) {
            c = c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 32) : c;
        }
        return textOf(folded);
    }

    const DocumentTables& tables_;
    ListLevels levels_;
    StyleResolver styles_;
};

std::optional<DocumentContent> readable(const std::filesystem::path& file) {
    try {
        return readDocument(file);
    } catch (const FormatError&) {
        return std::nullopt;
    }
}

// A target whose Normal and headings are defined in their own way.
DocumentTables strictTables() {
    DocumentTables tables = plainTables();
    auto& styles = tables.styles.styles;
    styles[0]->paragraph = tables.lists.intern(sprm8(sprm::PJc80, 3) + sprm16(sprm::PDyaAfter, 33));
    styles[0]->character = tables.lists.intern(sprm16(sprm::CHps, 21) + sprm8(sprm::CFItalic, 1) +
                                               sprm32(sprm::CCv, 0x00112233));
    for (std::uint16_t level = 1; level <= 9; ++level) {
        StyleDefinition heading =
            styleOf(StyleKind::paragraph, u"标题 " + std::u16string(1, u'0' + level), level, 0);
        heading.character = tables.lists.intern(sprm8(sprm::CFBold, 1) + sprm16(sprm::CHps, 32));
        heading.paragraph = tables.lists.intern(sprm16(sprm::PDcxaLeft1, 200));
        styles[level] = heading;
    }
    return tables;
}

std::string firstDifference(const Description& one, const Description& other) {
    for (const auto& [property, value] : one) {
        const auto there = other.find(property);
        if (there == other.end() || there->second != value) {
            return std::to_string(property) + ": " + value + " is " +
                   (there == other.end() ? "nothing" : there->second);
        }
    }
    for (const auto& [property, value] : other) {
        if (!one.contains(property)) {
            return std::to_string(property) + ": nothing is " + value;
        }
    }
    return {};
}

// The first place where the text looks otherwise than before.
std::string changedLook(const DocumentContent& source, const ImportTarget& target) {
    Looks before(source.tables);
    Looks after(target.tables);
    const Story& story = *target.last.text;
    if (story.text != joined(source.main)->text) {
        return {}; // characters were taken out: positions do not match
    }
    std::size_t run = 0;
    Cp end = 0;
    Cp runEnd = 0;
    std::size_t sourceRun = 0;
    Cp sourceRunEnd =
        joined(source.main)->characters.empty() ? 0 : joined(source.main)->characters[0].length;
    runEnd = story.characters.empty() ? 0 : story.characters[0].length;
    Cp at = 0;
    for (std::size_t i = 0; i < story.paragraphs.size(); ++i) {
        const ParagraphRun& here = joined(source.main)->paragraphs[i];
        std::string difference =
            firstDifference(before.paragraph(here), after.paragraph(story.paragraphs[i]));
        end += here.length;
        while (difference.empty() && at < end) {
            difference = firstDifference(
                before.character(here.style, joined(source.main)->characters[sourceRun].properties),
                after.character(story.paragraphs[i].style, story.characters[run].properties));
            at = std::min({end, runEnd, sourceRunEnd});
            if (at == runEnd && ++run < story.characters.size()) {
                runEnd += story.characters[run].length;
            }
            if (at == sourceRunEnd && ++sourceRun < joined(source.main)->characters.size()) {
                sourceRunEnd += joined(source.main)->characters[sourceRun].length;
            }
        }
        if (!difference.empty()) {
            return "paragraph " + std::to_string(i) + ", property " + difference;
        }
    }
    return {};
}

template <class Run>
Cp total(const std::vector<Run>& runs) {
    Cp sum = 0;
    for (const Run& run : runs) {
        sum += run.length;
    }
    return sum;
}

} // namespace

TEST(ImportedCorpus, EveryDocumentStaysWholeAndKeepsItsLook) {
    const auto files = foreignDocuments();
    int compared = 0;
    for (const auto& file : files) {
        const std::optional<DocumentContent> source = readable(file);
        if (!source) {
            continue;
        }
        ImportTarget target;
        target.tables = strictTables();
        // Twice: what came along the first time is what the second meets.
        target.import(*source);
        target.import(*source);
        const Story& story = *target.last.text;
        EXPECT_EQ(total(story.characters), story.size()) << file;
        EXPECT_EQ(total(story.paragraphs), story.size()) << file;
        EXPECT_EQ(total(target.last.sections), story.size()) << file;
        for (const FieldMark& mark : story.fields) {
            ASSERT_EQ(story.text.at(mark.at), mark.character) << file;
        }
        EXPECT_EQ(changedLook(*source, target), "") << file;
        ++compared;
    }
    EXPECT_GE(compared, 24);
}

namespace {

// The header or footer of that kind that a section shows: its own or that of one before it.
SlicedText shownHeader(const std::vector<HeaderSet>& headers, std::size_t section,
                       std::size_t kind) {
    SlicedText shown;
    for (std::size_t i = 0; i <= section && i < headers.size(); ++i) {
        shown = headers[i][kind].empty() ? shown : headers[i][kind];
    }
    return shown;
}

} // namespace

TEST(ImportedCorpus, SectionsInsideAFileShowTheirOwnHeaders) {
    if (!qvnd::test::corpusFolder()) {
        GTEST_SKIP() << "no documents with sections here";
    }
    int compared = 0;
    for (const auto& file : foreignDocuments()) {
        const std::optional<DocumentContent> source = readable(file);
        if (!source || source->sections.size() < 2) {
            continue;
        }
        WorkingDocument document(normalTemplate());
        ImportNotes notes;
        DocumentBody body =
            importDocument(document.tables(), document.bookmarkNames(), *source, notes);
        insertDocument(document, document.main().size() - 1, std::move(body));
        const DocumentContent& result = document.content();
        for (std::size_t i = 0; i + 1 < source->sections.size(); ++i) {
            for (std::size_t kind = 0; kind < HeaderSet{}.size(); ++kind) {
                const SlicedText expected = shownHeader(source->headers, i, kind);
                if (!expected.empty()) {
                    EXPECT_EQ(documentText(shownHeader(result.headers, i, kind), result.tables),
                              documentText(expected, source->tables))
                        << file << " section " << i << " kind " << kind;
                    ++compared;
                }
            }
        }
    }
    EXPECT_GE(compared, 4);
}
