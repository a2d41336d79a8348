#include "platform/word/docfile/reader/FormattedText.h"

#include "platform/word/docfile/container/FormatError.h"
#include "platform/word/docfile/document/Excerpt.h"
#include "platform/word/docfile/format/SpecialCharacters.h"
#include "platform/word/docfile/formatting/CharacterPages.h"
#include "platform/word/docfile/formatting/FormattingRuns.h"
#include "platform/word/docfile/formatting/ParagraphPages.h"
#include "platform/word/docfile/text/StoryRepair.h"

#include <algorithm>
#include <optional>

namespace qvnd::word {

namespace {

Cp ceilingOfHalf(std::uint32_t bytes, std::uint32_t unit) { return (bytes + unit - 1) / unit; }

void appendText(std::u16string& text, const Piece& piece, ByteView stream) {
    const ByteView bytes =
        stream.subspan(piece.fc, std::size_t{piece.length} * piece.bytesPerCharacter());
    if (piece.compressed) {
        std::transform(bytes.begin(), bytes.end(), std::back_inserter(text), decompressed);
    } else {
        text += LittleEndianReader(bytes, "text").text(piece.length);
    }
}

// Of the entries of a page before that one, the first that refers to the same place; the entry
// itself where there is none. Most runs of a page share a few records, which need not be compared.
template <class Entry>
std::size_t firstOfRecord(const std::vector<Entry>& entries, std::size_t entry) {
    const ByteView record = entries[entry].properties;
    std::size_t first = 0;
    while (entries[first].properties.data() != record.data() ||
           entries[first].properties.size() != record.size()) {
        ++first;
    }
    return first;
}

FormattingRuns characterRuns(const OpenedDocument& document, PropertyExpansion& expansion) {
    const auto decode = [&](ByteView page, bool& sound) {
        const CharacterPage decoded = decodeCharacterPage(page);
        sound = decoded.sound;
        std::vector<FormattingRun> runs;
        runs.reserve(decoded.entries.size());
        for (std::size_t i = 0; i < decoded.entries.size(); ++i) {
            const CharacterEntry& entry = decoded.entries[i];
            const std::size_t first = firstOfRecord(decoded.entries, i);
            runs.push_back(
                {entry.firstFc, entry.limitFc, 0,
                 first < i ? runs[first].properties : expansion.characters(entry.properties)});
        }
        return runs;
    };
    return readFormattingRuns(document.wordDocument,
                              decodeBinTable(document.part(FibPair::PlcfBteChpx)), decode);
}

FormattingRuns paragraphRuns(const OpenedDocument& document, PropertyExpansion& expansion) {
    const auto decode = [&](ByteView page, bool& sound) {
        const ParagraphPage decoded = decodeParagraphPage(page);
        sound = decoded.sound;
        std::vector<FormattingRun> runs;
        runs.reserve(decoded.entries.size());
        for (std::size_t i = 0; i < decoded.entries.size(); ++i) {
            const ParagraphEntry& entry = decoded.entries[i];
            const std::size_t first = firstOfRecord(decoded.entries, i);
            const PropertyExpansion::Paragraph paragraph =
                first < i ? PropertyExpansion::Paragraph{runs[first].style, runs[first].properties}
                          : expansion.paragraph(entry.style, entry.properties);
            runs.push_back({entry.firstFc, entry.limitFc, paragraph.style, paragraph.properties});
        }
        return runs;
    };
    return readFormattingRuns(document.wordDocument,
                              decodeBinTable(document.part(FibPair::PlcfBtePapx)), decode);
}

// Puts text and formatting together, piece by piece.
class TextAssembly {
public:
    TextAssembly(FormattedText& result, const FormattingRuns& characters,
                 const FormattingRuns& paragraphs, std::span<const Cp> sectionEnds,
                 PieceModifiers& modifiers)
        : result_(result), characters_(characters.runs), paragraphs_(paragraphs.runs),
          sectionEnds_(sectionEnds), modifiers_(modifiers) {}

    void add(const Piece& piece, ByteView stream) {
        const Cp start = result_.size();
        appendText(result_.text, piece, stream);
        makeRoom(start);
        addCharacters(piece, start);
        addParagraphs(piece, start);
    }

    // The last paragraph, should it lack its mark.
    void close(const Piece& last) {
        if (paragraphStart_ < result_.size()) {
            endParagraph(last, result_.size(),
                         static_cast<std::uint32_t>(last.limitFc()) - last.bytesPerCharacter());
        }
    }

    // Where the first text stands that the pages say nothing of, more than a paragraph mark.
    std::optional<Cp> lacksFormatting() const { return lacksFormatting_; }

private:
    static bool mayEndParagraph(char16_t c) {
        return c == special::paragraphMark || c == special::cellMark || c == special::pageBreak;
    }

    // For the paragraphs that end in the text from `start` on: there may be millions, and a vector
    // that grows by itself takes three times their size.
    void makeRoom(Cp start) {
        std::vector<ParagraphRun>& paragraphs = result_.paragraphs;
        const auto ends = static_cast<std::size_t>(
            std::count_if(result_.text.begin() + start, result_.text.end(), mayEndParagraph));
        if (paragraphs.size() + ends >= paragraphs.capacity()) {
            paragraphs.reserve(std::max(paragraphs.size() + ends + 1, 2 * paragraphs.size()));
        }
    }

    void addCharacters(const Piece& piece, Cp start) {
        const auto limit = static_cast<std::uint32_t>(piece.limitFc());
        Cp done = 0;
        for (std::uint32_t fc = piece.fc; done < piece.length;) {
            const FormattingRun run = characters_.at(fc);
            fc = std::min(run.limitFc, limit);
            const Cp reached = ceilingOfHalf(fc - piece.fc, piece.bytesPerCharacter());
            if (!run.known) {
                noteLacking(start + done, start + reached);
            }
            appendRun(result_.characters,
                      {reached - done, modifiers_.characters(run.properties, piece.modifier)});
            done = reached;
        }
    }

    void addParagraphs(const Piece& piece, Cp start) {
        for (Cp i = 0; i < piece.length; ++i) {
            const char16_t c = result_.text[start + i];
            if (!mayEndParagraph(c)) {
                continue;
            }
            const std::uint32_t fc = piece.fc + i * piece.bytesPerCharacter();
            const Cp end = start + i + 1;
            if (c != special::pageBreak || endsSection(end) || endsParagraph(piece, fc)) {
                endParagraph(piece, end, fc);
            }
        }
    }

    void noteLacking(Cp first, Cp limit) {
        const auto text = std::u16string_view(result_.text).substr(first, limit - first);
        const std::size_t at = text.find_first_not_of(special::paragraphMark);
        if (at != std::u16string_view::npos) {
            const Cp found = first + static_cast<Cp>(at);
            lacksFormatting_ = std::min(lacksFormatting_.value_or(found), found);
        }
    }

    bool endsSection(Cp end) {
        while (nextSection_ < sectionEnds_.size() && sectionEnds_[nextSection_] < end) {
            ++nextSection_;
        }
        return nextSection_ < sectionEnds_.size() && sectionEnds_[nextSection_] == end;
    }

    // Whether the pages say that a paragraph ends with the character at `fc`. A break that they
    // say so of is followed by a new paragraph; any other stands within one.
    bool endsParagraph(const Piece& piece, std::uint32_t fc) {
        return paragraphs_.at(fc).limitFc == fc + piece.bytesPerCharacter();
    }

    void endParagraph(const Piece& piece, Cp end, std::uint32_t fc) {
        const FormattingRun run = paragraphs_.at(fc);
        if (!run.known) {
            noteLacking(paragraphStart_, end);
        }
        const auto paragraph = modifiers_.paragraph({run.style, run.properties}, piece.modifier);
        result_.paragraphs.push_back(
            {end - paragraphStart_, paragraph.style, paragraph.properties});
        paragraphStart_ = end;
    }

    FormattedText& result_;
    FormattingLookup characters_;
    FormattingLookup paragraphs_;
    std::span<const Cp> sectionEnds_;
    PieceModifiers& modifiers_;
    std::size_t nextSection_ = 0;
    Cp paragraphStart_ = 0;
    std::optional<Cp> lacksFormatting_;
};

// Pieces of a sound file do not share text, save for copies; a file that claims more text than it
// has bytes would exhaust the memory.
std::uint64_t mostCharacters(const OpenedDocument& document) {
    return std::uint64_t{document.wordDocument.size()} + 1024;
}

template <typename Run>
std::vector<Cp> startsOf(const std::vector<Run>& runs) {
    std::vector<Cp> starts;
    starts.reserve(runs.size());
    Cp at = 0;
    for (const Run& run : runs) {
        starts.push_back(at);
        at += run.length;
    }
    return starts;
}

// The runs of [start, start + length), the first and the last cut to it. `starts` may be empty
// when `start` is 0.
template <typename Run>
std::vector<Run> cut(const std::vector<Run>& runs, const std::vector<Cp>& starts, Cp start,
                     Cp length) {
    auto run = runs.begin();
    Cp at = 0;
    if (start > 0 && !starts.empty()) {
        const auto after = std::upper_bound(starts.begin(), starts.end(), start);
        run += std::max<std::ptrdiff_t>(after - starts.begin() - 1, 0);
        at = starts[static_cast<std::size_t>(run - runs.begin())];
    }
    auto last = run;
    for (Cp end = at; last != runs.end() && end < start + length; ++last) {
        end += last->length;
    }
    std::vector<Run> result(run, last);
    for (Run& one : result) {
        const Cp first = std::max(at, start);
        at += one.length;
        one.length = std::min(at, start + length) - first;
    }
    return result;
}

// Behind the last story stands one more paragraph mark, which belongs to none.
Cp storiesLength(const OpenedDocument& document) {
    const PartLengths& ccp = document.fib.ccp;
    return static_cast<Cp>(std::min<std::uint64_t>(ccp.text + ccp.sideTotal(), 0x7FFFFFFF));
}

// How much text the pieces give at most.
std::size_t textLength(const OpenedDocument& document, const PieceTable& table) {
    std::uint64_t length = 0;
    for (const Piece& piece : table.pieces) {
        length += piece.length;
    }
    return std::min({length, std::uint64_t{storiesLength(document)}, mostCharacters(document)});
}

// Files of one piece: the text lies between fcMin and fcMac.
PieceTable singlePiece(const OpenedDocument& document) {
    const Fib& fib = document.fib;
    const std::uint64_t wanted = fib.ccp.text + fib.ccp.sideTotal();
    const std::uint64_t limit = std::min<std::uint64_t>(fib.fcMac, document.wordDocument.size());
    if (wanted == 0 || fib.fcMin >= limit) {
        throw FormatError(FormatError::Kind::damaged, "neither a piece table nor a place of text");
    }
    Piece piece;
    piece.fc = fib.fcMin;
    piece.compressed = limit - fib.fcMin < 2 * wanted;
    piece.length = static_cast<Cp>(
        std::min<std::uint64_t>(wanted, (limit - fib.fcMin) / piece.bytesPerCharacter()));
    return {{piece}, {}};
}

} // namespace

Story FormattedText::part(Cp start, Cp length) const {
    Story story;
    start = std::min(start, size());
    length = std::min(length, size() - start);
    story.text = text.substr(start, length);
    if (length > 0) {
        story.characters = cut(characters, characterStarts_, start, length);
        story.paragraphs = cut(paragraphs, paragraphStarts_, start, length);
    }
    return story;
}

void FormattedText::index() {
    characterStarts_ = startsOf(characters);
    paragraphStarts_ = startsOf(paragraphs);
}

PieceTable readPieceTable(const OpenedDocument& document, Remarks& remarks) {
    int damage = 0;
    PieceTable table;
    try {
        table = decodeClx(document.part(FibPair::Clx), document.wordDocument.size(), &damage);
    } catch (const FormatError&) {
        table = singlePiece(document);
        remarks.emplace_back(
            u"文字的次序记录已损坏，按存放的先后读出，请核对文字是否完整、次序是否正确。");
    }
    if (damage > 0) {
        remarks.push_back(u"有 " + digits(damage) + u" 段文字的位置超出文件范围，未能读出。");
    }
    return table;
}

FormattedText readFormattedText(const OpenedDocument& document, const PieceTable& table,
                                std::span<const Cp> sectionEnds, PropertyExpansion& expansion,
                                PropertyLists& lists, Remarks& remarks) {
    const FormattingRuns characters = characterRuns(document, expansion);
    const FormattingRuns paragraphs = paragraphRuns(document, expansion);
    PieceModifiers modifiers(table.modifiers, expansion, lists);
    FormattedText result;
    result.text.reserve(textLength(document, table));
    TextAssembly assembly(result, characters, paragraphs, sectionEnds, modifiers);
    Piece last;
    for (Piece piece : table.pieces) {
        piece.length = std::min(piece.length, storiesLength(document) - result.size());
        if (piece.length == 0) {
            break;
        }
        if (std::uint64_t{result.size()} + piece.length > mostCharacters(document)) {
            remarks.emplace_back(u"文件声称的文字多于文件本身，其余部分未能读出。");
            break;
        }
        assembly.add(piece, document.wordDocument);
        last = piece;
    }
    assembly.close(last);
    if (document.fib.ccp.sideTotal() > 0) {
        result.index();
    }
    const int damaged = characters.damagedPages + paragraphs.damagedPages;
    if (damaged > 0) {
        remarks.push_back(u"有 " + digits(damaged) +
                          u" 处格式数据已损坏，相应文字的字体和段落格式可能与原来不同。");
    }
    if (const auto lacking = assembly.lacksFormatting()) {
        remarks.push_back(u"部分文字没有格式记录，按默认格式读出" +
                          firstPlace(wordsFrom(result.text, *lacking)) + u"。");
    }
    return result;
}

} // namespace qvnd::word
