#include "platform/word/docfile/writer/DocumentSession.h"

#include "platform/word/docfile/format/Dop.h"
#include "platform/word/docfile/format/Sttb.h"
#include "platform/word/docfile/formatting/Sections.h"
#include "platform/word/docfile/objects/OleStreams.h"
#include "platform/word/docfile/styles/FontTable.h"
#include "platform/word/docfile/styles/ListTables.h"
#include "platform/word/docfile/styles/StyleSheetTable.h"
#include "platform/word/docfile/text/BookmarkTables.h"
#include "platform/word/docfile/text/Fields.h"
#include "platform/word/docfile/text/RevisionAuthors.h"

#include <algorithm>
#include <set>
#include <utility>

namespace qvnd::word {

namespace {

// Title, author and other words of a document (SttbfAssoc), all empty.
constexpr std::size_t associatedTexts = 18;

Cp lengthOf(const std::vector<StorySlice>& slices) {
    Cp length = 0;
    for (const StorySlice& slice : slices) {
        length += slice.length;
    }
    return length;
}

std::set<Cp> endsOf(const std::vector<SectionRun>& sections) {
    std::set<Cp> ends;
    Cp end = 0;
    for (const SectionRun& section : sections) {
        ends.insert(ends.end(), end += section.length);
    }
    return ends;
}

std::vector<FieldMark> fieldsOf(const std::vector<StorySlice>& slices) {
    std::vector<FieldMark> marks;
    Cp at = 0;
    for (const StorySlice& slice : slices) {
        if (!slice.fragment->fields.empty()) {
            appendMarks(marks, slice.fragment->fields, slice.begin, slice.length, at);
        }
        at += slice.length;
    }
    return marks;
}

// Everything that the file holds of a story, its fields apart.
Bytes contentsOf(const Story& story, FileProperties& properties) {
    LittleEndianWriter out;
    out.u32(story.size());
    out.text(story.text);
    for (const CharacterRun& run : story.characters) {
        const ByteView list = properties.of(run.properties);
        out.u32(run.length);
        out.u32(static_cast<std::uint32_t>(list.size()));
        out.bytes(list);
    }
    for (const ParagraphRun& run : story.paragraphs) {
        const ByteView list = properties.of(run.properties);
        out.u32(run.length);
        out.u16(run.style);
        out.u32(static_cast<std::uint32_t>(list.size()));
        out.bytes(list);
    }
    return out.take();
}

// With the paragraph mark that ends all text of a document with more than a main story.
std::shared_ptr<const Story> closed(const Story& story) {
    Story result = story;
    result.text.push_back(0x0D);
    result.characters.push_back({1, PropertyListId::empty});
    result.paragraphs.push_back({1, 0, PropertyListId::empty});
    return std::make_shared<const Story>(std::move(result));
}

} // namespace

DocumentSession::DocumentSession(std::unique_ptr<OutputFile> file)
    : store_(std::move(file), wordDocumentClass), word_(store_), data_(store_), objects_(store_),
      table_(store_, store_.addStream(u"1Table")) {}

void DocumentSession::write(const DocumentContent& content) {
    FileProperties properties(content.tables, data_, objects_);
    const EncodedHeaders headers = encodeHeaders(content.headers);
    writeText(content, headers, properties);
    writeSections(content, properties);
    data_.flush();
    writeTables(content);
    writePositions(content, headers);
    table_.finish();
    writeFib(lengthOf(content.main), headers.story.size());
    if (!started_) {
        store_.append(store_.addStream(compObjName), encodeCompObj());
        store_.append(store_.addStream(summaryName), encodeSummary({}));
        store_.append(store_.addStream(documentSummaryName), encodeDocumentSummary());
    }
    started_ = true;
}

void DocumentSession::writeText(const DocumentContent& content, const EncodedHeaders& headers,
                                FileProperties& properties) {
    std::vector<TextRange> ranges = places_.missing(content.main);
    const std::size_t ofMain = ranges.size();
    Bytes key = headers.story.text.empty() ? Bytes{} : contentsOf(headers.story, properties);
    const bool headersChanged = key != headers_.key;
    headers_.key = std::move(key);
    headers_.piece.length = headers.story.text.empty() ? 0 : headers.story.size() + 1;
    if (headersChanged && headers_.piece.length != 0) {
        ranges.push_back({closed(headers.story), 0, headers_.piece.length, lengthOf(content.main)});
    }
    if (ranges.empty()) {
        return;
    }
    const std::vector<std::uint32_t> places =
        word_.append(ranges, endsOf(content.sections), properties, data_);
    for (std::size_t i = 0; i < ofMain; ++i) {
        places_.add(ranges[i], places[i]);
    }
    if (ranges.size() > ofMain) {
        headers_.piece.fc = places.back();
    }
}

void DocumentSession::writeSections(const DocumentContent& content, FileProperties& properties) {
    std::vector<SectionPlace> sections;
    for (const SectionRun& section : content.sections) {
        sections.push_back(
            {section.length, word_.placeOfSection(properties.of(section.properties))});
    }
    word_.finish();
    table_.put(FibPair::PlcfSed, encodeSections(sections));
}

void DocumentSession::writeTables(const DocumentContent& content) {
    const DocumentTables& tables = content.tables;
    table_.put(FibPair::Stshf, encodeStyleSheet(tables.styles, tables.lists));
    table_.put(FibPair::SttbfFfn, encodeFonts(tables.fonts));
    const auto lists = listDefinitions_.encode(tables.listDefinitions, tables.lists);
    table_.putFront(FibPair::PlfLst, lists.front, lists.kept, lists.size);
    table_.put(FibPair::PlfLfo, encodeListOverrides(tables.listOverrides, tables.lists));
    table_.put(FibPair::SttbListNames, listDefinitions_.encodeNames(tables.listDefinitions));
    table_.put(FibPair::SttbfRMark, encodeRevisionAuthors(tables.authors));
    table_.put(FibPair::Dop, dopOfWord2003(content.settings));
    table_.put(FibPair::SttbfAssoc, encodeSttb({std::vector<Sttb::Entry>(associatedTexts), 0}));
}

std::vector<Piece> DocumentSession::pieces(const DocumentContent& content) {
    std::vector<Piece> result = places_.pieces(content.main);
    if (headers_.piece.length != 0) {
        if (!result.empty() && result.back().limitFc() == headers_.piece.fc) {
            result.back().length += headers_.piece.length;
        } else {
            result.push_back(headers_.piece);
        }
    }
    return result;
}

void DocumentSession::writePositions(const DocumentContent& content,
                                     const EncodedHeaders& headers) {
    const Cp mainLength = lengthOf(content.main);
    Cp limit = mainLength + headers.story.size();
    std::vector<Bookmark> all = content.bookmarks;
    all.insert(all.end(), marks_.begin(), marks_.end());
    for (const Bookmark& bookmark : all) {
        limit = std::max(limit, bookmark.end);
    }
    const BookmarkTables bookmarks = encodeBookmarks(all, limit);
    table_.put(FibPair::SttbfBkmk, bookmarks.names);
    table_.put(FibPair::PlcfBkf, bookmarks.starts);
    table_.put(FibPair::PlcfBkl, bookmarks.ends);
    table_.put(FibPair::PlcfFldMom, encodeFields(fieldsOf(content.main), mainLength));
    table_.put(FibPair::PlcfFldHdr, encodeFields(headers.story.fields, headers.story.size()));
    table_.put(FibPair::PlcfHdd, headers.plcfHdd);
    table_.put(FibPair::PlcfBteChpx, word_.characterPages().parts());
    table_.put(FibPair::PlcfBtePapx, word_.paragraphPages().parts());
    table_.put(FibPair::Clx, encodeClx({pieces(content), {}}));
}

void DocumentSession::writeFib(Cp mainLength, Cp headerLength) {
    Fib fib;
    saves_ = started_ ? static_cast<std::uint16_t>(std::min(saves_ + 1, 15)) : saves_;
    fib.fComplex = started_;
    fib.quickSaves = saves_;
    fib.fHasPic = data_.holdsBlobs();
    fib.fcMin = WordStream::fibRoom;
    fib.fcMac = word_.textLimit();
    fib.cbMac = word_.size();
    fib.ccp.text = mainLength;
    fib.ccp.headers = headerLength;
    for (std::size_t i = 0; i < Fib::pairsOfWord2003; ++i) {
        const auto pair = static_cast<FibPair>(i);
        fib.set(pair, table_.place(pair));
    }
    word_.putFib(encodeFib(fib));
}

} // namespace qvnd::word
