#include "platform/word/docfile/WordFileBuilder.h"

#include "platform/word/docfile/EncodedPages.h"
#include "platform/word/docfile/container/CompoundStore.h"
#include "platform/word/docfile/formatting/Sections.h"
#include "platform/word/docfile/styles/FontTable.h"
#include "platform/word/docfile/styles/StyleSheetTable.h"
#include "support/MemoryFolder.h"

#include <numeric>

namespace qvnd::test {

using namespace word;

namespace {

constexpr std::size_t textStart = 2048;

class Builder {
public:
    explicit Builder(const WordFile& file) : file_(file) { document_.zeros(textStart); }

    WordStreams build() {
        writePieces();
        writePages(characterPages_, FibPair::PlcfBteChpx);
        writePages(paragraphPages_, FibPair::PlcfBtePapx);
        writeSections();
        writeTables();
        return {finishedDocument(), table_.take(), file_.data, {}};
    }

private:
    // A length as the encoders count it, in units of two bytes.
    static Cp units(const PieceText& piece, Cp length) {
        return piece.compressed ? length / 2 : length;
    }

    void writePieces() {
        std::vector<std::size_t> order = file_.storedOrder;
        if (order.empty()) {
            order.resize(file_.pieces.size());
            std::iota(order.begin(), order.end(), std::size_t{0});
        }
        pieces_.pieces.resize(file_.pieces.size());
        for (const std::size_t number : order) {
            writePiece(file_.pieces[number], pieces_.pieces[number]);
        }
        pieces_.modifiers = file_.modifiers;
    }

    void writePiece(const PieceText& text, Piece& piece) {
        piece.length = static_cast<Cp>(text.text.size());
        piece.fc = static_cast<std::uint32_t>(document_.position());
        piece.compressed = text.compressed;
        piece.modifier = text.modifier;
        for (const char16_t c : text.text) {
            text.compressed ? document_.u8(c) : document_.u16(c);
        }
        addCharacterPages(text, piece.fc);
        addParagraphPages(text, piece.fc);
    }

    void addCharacterPages(const PieceText& text, std::uint32_t fc) {
        const Cp all = units(text, static_cast<Cp>(text.text.size()));
        std::vector<FormattedCharacters> runs;
        for (const PieceText::Characters& run : text.characters) {
            runs.push_back({units(text, run.length), run.properties});
        }
        if (runs.empty()) {
            runs.push_back({all, {}});
        }
        for (FormattingPage& page : encodeCharacterPages(runs, fc)) {
            characterPages_.push_back(std::move(page));
        }
    }

    void addParagraphPages(const PieceText& text, std::uint32_t fc) {
        const Cp all = units(text, static_cast<Cp>(text.text.size()));
        std::vector<FormattedParagraph> runs;
        for (const PieceText::Paragraph& run : text.paragraphs) {
            runs.push_back({units(text, run.length), run.style, run.properties});
        }
        if (runs.empty()) {
            runs.push_back({all, 0, {}});
        }
        for (FormattingPage& page : encodeParagraphPages(runs, fc, {})) {
            paragraphPages_.push_back(std::move(page));
        }
    }

    void writePages(const std::vector<FormattingPage>& pages, FibPair pair) {
        BinTableEncoder bins;
        for (const FormattingPage& page : pages) {
            document_.align(formattingPageSize);
            bins.add(page.firstFc, page.limitFc,
                     static_cast<std::uint32_t>(document_.position() / 512));
            document_.bytes(page.bytes);
        }
        LittleEndianWriter table;
        for (const ByteView part : bins.parts()) {
            table.bytes(part);
        }
        writePart(pair, table.take());
    }

    void writeSections() {
        std::vector<SectionPlace> places;
        for (const WordFile::Section& section : file_.sections) {
            places.push_back({section.length, static_cast<std::uint32_t>(document_.position())});
            document_.bytes(encodeSepx(section.properties));
        }
        if (!places.empty()) {
            writePart(FibPair::PlcfSed, encodeSections(places));
        }
    }

    void writeTables() {
        writePart(FibPair::Clx, encodeClx(pieces_));
        if (file_.parts.count(FibPair::Stshf) == 0) {
            StyleSheet sheet;
            sheet.styles.resize(15);
            sheet.styles[0] = StyleDefinition{};
            sheet.styles[0]->name = u"Normal";
            sheet.styles[0]->sti = 0;
            writePart(FibPair::Stshf, encodeStyleSheet(sheet, PropertyLists{}));
        }
        if (file_.parts.count(FibPair::SttbfFfn) == 0) {
            writePart(FibPair::SttbfFfn, encodeFonts({}));
        }
        for (const auto& [pair, bytes] : file_.parts) {
            writePart(pair, bytes);
        }
    }

    void writePart(FibPair pair, const Bytes& bytes) {
        fib_.set(pair, {static_cast<std::uint32_t>(table_.position()),
                        static_cast<std::uint32_t>(bytes.size())});
        table_.bytes(bytes);
    }

    Bytes finishedDocument() {
        fib_.ccp = file_.lengths;
        if (fib_.ccp.text == 0) {
            for (const PieceText& piece : file_.pieces) {
                fib_.ccp.text += static_cast<std::uint32_t>(piece.text.size());
            }
        }
        fib_.cbMac = static_cast<std::uint32_t>(document_.position());
        Bytes bytes = document_.take();
        const Bytes head = encodeFib(fib_);
        std::copy(head.begin(), head.end(), bytes.begin());
        return bytes;
    }

    const WordFile& file_;
    LittleEndianWriter document_;
    LittleEndianWriter table_;
    PieceTable pieces_;
    std::vector<FormattingPage> characterPages_;
    std::vector<FormattingPage> paragraphPages_;
    Fib fib_;
};

void addStorages(CompoundStore& store, const std::vector<std::u16string>& paths) {
    std::map<std::u16string, CompoundStore::Stream> known;
    for (const std::u16string& path : paths) {
        const std::size_t slash = path.find(u'/');
        const std::u16string outer = path.substr(0, slash);
        if (known.count(outer) == 0) {
            known[outer] = store.addStorage(CompoundDirectory::root, outer, {});
        }
        if (slash != std::u16string::npos) {
            store.addStorage(known[outer], path.substr(slash + 1), {});
        }
    }
}

} // namespace

WordStreams wordStreams(const WordFile& file) { return Builder(file).build(); }

Bytes compoundFile(const WordStreams& streams, const std::vector<std::u16string>& storages) {
    MemoryFolder folder;
    std::filesystem::path path;
    CompoundStore store(folder.createBeside("/folder/target", &path), {});
    store.append(store.addStream(u"WordDocument"), streams.wordDocument);
    store.append(store.addStream(u"1Table"), streams.table);
    if (!streams.data.empty()) {
        store.append(store.addStream(u"Data"), streams.data);
    }
    if (!streams.protectedContent.empty()) {
        store.append(store.addStream(u"\tDRMContent"), streams.protectedContent);
    }
    addStorages(store, storages);
    store.commit(CompoundStore::Durability::killedProcess);
    return folder.bytes(path);
}

Bytes wordFile(const WordFile& file) { return compoundFile(wordStreams(file), file.storages); }

WordFile plainWordFile(std::u16string text) {
    WordFile file;
    PieceText piece;
    piece.text = std::move(text);
    file.pieces.push_back(std::move(piece));
    return file;
}

} // namespace qvnd::test
