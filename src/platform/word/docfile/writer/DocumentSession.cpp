#include "platform/word/docfile/writer/DocumentSession.h"

#include "platform/word/docfile/format/Dop.h"
#include "platform/word/docfile/format/Sttb.h"
#include "platform/word/docfile/format/TextParts.h"
#include "platform/word/docfile/formatting/Sections.h"
#include "platform/word/docfile/objects/OleStreams.h"
#include "platform/word/docfile/styles/FontTable.h"
#include "platform/word/docfile/styles/ListTables.h"
#include "platform/word/docfile/styles/StyleSheetTable.h"
#include "platform/word/docfile/text/BookmarkTables.h"
#include "platform/word/docfile/text/CommentTables.h"
#include "platform/word/docfile/text/DocumentVariables.h"
#include "platform/word/docfile/text/Fields.h"
#include "platform/word/docfile/text/RevisionAuthors.h"

#include <algorithm>
#include <iterator>
#include <unordered_map>
#include <utility>

namespace qvnd::word {

namespace {

// Further saves are not counted.
constexpr int mostCountedSaves = 15;

Bytes encodeAssociated(const DocumentInformation& information) {
    Sttb table{std::vector<Sttb::Entry>(associatedTextCount), 0};
    for (std::size_t i = 0; i < information.associated.size(); ++i) {
        table.entries[i].text = information.associated[i];
    }
    return encodeSttb(table);
}

// The last section holds `added` characters more.
std::vector<Cp> endsOf(const std::vector<SectionRun>& sections, Cp added) {
    std::vector<Cp> ends;
    ends.reserve(sections.size());
    Cp end = 0;
    for (const SectionRun& section : sections) {
        end += section.length + (&section == &sections.back() ? added : 0);
        ends.push_back(end);
    }
    return ends;
}

// Pieces that follow each other in the file are one.
void append(std::vector<Piece>& pieces, const Piece& piece) {
    if (piece.length == 0) {
        return;
    }
    if (!pieces.empty() && pieces.back().limitFc() == piece.fc) {
        pieces.back().length += piece.length;
    } else {
        pieces.push_back(piece);
    }
}

} // namespace

DocumentSession::DocumentSession(std::unique_ptr<OutputFile> file)
    : store_(std::move(file), wordDocumentClass), word_(store_), data_(store_), objects_(store_),
      table_(store_, store_.addStream(u"1Table")) {}

DocumentSession::Parts DocumentSession::partsOf(const DocumentContent& content) {
    const DocumentTables& tables = content.tables;
    const std::vector<Anchor> anchors = anchorsOf(content.main);
    Parts parts;
    if (!tables.bulletPictures.empty()) {
        parts.bullets = static_cast<Cp>(tables.bulletPictures.size());
        parts.withBullets = bullets_.within(content.main, tables.bulletPictures, tables.lists);
    }
    std::array<SlicedText, textParts.size()> texts;
    const auto textOf = [&](TextPart part) -> SlicedText& {
        return texts[static_cast<std::size_t>(part)];
    };
    for (std::size_t i = 0; i < sideParts.size(); ++i) {
        SideText text = gatherSideText(anchors, sideParts[i].kind, tables.sideStories, mark_);
        parts.references[i] = std::move(text.references);
        textOf(sideParts[i].part) = std::move(text.slices);
    }
    EncodedHeaders headers = encodeHeaders(content.separators, content.headers, mark_);
    parts.drawings = &mainDrawings_.gather(anchors, tables);
    parts.headerDrawings = &headerDrawings_.gather(anchorsOf(headers.text), tables);
    parts.plcfHdd = std::move(headers.plcfHdd);
    textOf(TextPart::headers) = std::move(headers.text);
    textOf(TextPart::textBoxes) = parts.drawings->slices;
    textOf(TextPart::headerTextBoxes) = parts.headerDrawings->slices;
    for (const TextPartFacts& facts : textParts) {
        SlicedText& text = textOf(facts.part);
        parts.lengths.*facts.length = lengthOf(text);
        parts.texts[static_cast<std::size_t>(facts.part)] = {parts.side.size(), text.size()};
        std::move(text.begin(), text.end(), std::back_inserter(parts.side));
    }
    parts.lengths.text = lengthOf(parts.main(content));
    if (!parts.side.empty()) {
        append(parts.side, slicesOf(mark_));
    }
    copies_.makeDistinct(parts.side);
    return parts;
}

void DocumentSession::write(const DocumentContent& content) {
    FileProperties properties(content.tables, data_, objects_);
    const Parts parts = partsOf(content);
    writeText(content, parts, properties);
    writeDrawings(content, parts);
    writeSections(content, parts, properties);
    data_.flush();
    writeTables(content);
    writePositions(content, parts);
    table_.finish();
    writeFib(parts);
    if (!started_) {
        writeInformation(content.information);
    }
    started_ = true;
}

void DocumentSession::writeInformation(const DocumentInformation& information) {
    const auto write = [&](const char16_t* name, const Bytes& kept, const Bytes& plain) {
        store_.append(store_.addStream(name), kept.empty() ? plain : kept);
    };
    write(compObjName, {}, encodeCompObj());
    write(summaryName, information.summary, encodeSummary({}));
    write(documentSummaryName, information.documentSummary, encodeDocumentSummary());
}

void DocumentSession::writeText(const DocumentContent& content, const Parts& parts,
                                FileProperties& properties) {
    std::vector<TextRange> ranges = main_.missing(parts.main(content));
    const std::size_t ofMain = ranges.size();
    for (TextRange& range : side_.missing(parts.side)) {
        range.position += parts.lengths.text;
        ranges.push_back(std::move(range));
    }
    if (ranges.empty()) {
        return;
    }
    const std::vector<std::uint32_t> places =
        word_.append(ranges, endsOf(content.sections, parts.bullets), properties, data_);
    for (std::size_t i = 0; i < ranges.size(); ++i) {
        (i < ofMain ? main_ : side_).add(ranges[i], places[i]);
    }
}

void DocumentSession::writeDrawings(const DocumentContent& content, const Parts& parts) {
    const DrawingStores stores{
        [this](const DataBlob& entry) { return word_.placeOfPicture(entry); },
        [this](const EmbeddedObjectRef& object) { return objects_.numberOf(object); }};
    const DrawingEncoder::Encoded drawings =
        drawings_.encode(*parts.drawings, parts.lengths.text, *parts.headerDrawings,
                         parts.lengths.headers, content.tables, stores);
    const auto put = [&](TextPart part, FibPair breaks, const DrawingTables& tables) {
        table_.putAround(factsOf(part).references->pair, tables.positions,
                         {tables.keptFrom, tables.kept}, tables.anchors);
        table_.put(factsOf(part).texts->pair, tables.boxes);
        table_.put(breaks, tables.breaks);
    };
    table_.putAround(FibPair::DggInfo, drawings.front, {drawings.keptFrom, drawings.kept},
                     drawings.back);
    put(TextPart::textBoxes, FibPair::PlcfTxbxBkd, drawings.main);
    put(TextPart::headerTextBoxes, FibPair::PlcfTxbxHdrBkd, drawings.headers);
}

void DocumentSession::writeSections(const DocumentContent& content, const Parts& parts,
                                    FileProperties& properties) {
    std::vector<SectionPlace> sections;
    for (const SectionRun& section : content.sections) {
        const auto [place, isNew] = sectionPlaces_.try_emplace(section.properties);
        if (isNew) {
            place->second = word_.placeOfSection(properties.of(section.properties));
        }
        sections.push_back({section.length, place->second});
    }
    sections.back().length += parts.bullets;
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
    table_.put(FibPair::SttbfAssoc, encodeAssociated(content.information));
    table_.put(FibPair::StwUser, encodeVariables(content.information.variables));
}

std::vector<Piece> DocumentSession::pieces(const DocumentContent& content, const Parts& parts) {
    std::vector<Piece> result = main_.pieces(parts.main(content));
    for (const Piece& piece : side_.pieces(parts.side)) {
        append(result, piece);
    }
    return result;
}

void DocumentSession::writePositions(const DocumentContent& content, const Parts& parts) {
    for (const TextPartFacts& facts : textParts) {
        table_.put(facts.fields, encodeFields(fieldsOf(parts.text(facts.part, content)),
                                              parts.lengths.*facts.length));
    }
    writeBookmarks(content, parts);
    writeSideStories(content, parts);
    table_.put(FibPair::PlcfHdd, parts.plcfHdd);
    table_.put(FibPair::PlcfBteChpx, word_.characterPages().parts());
    table_.put(FibPair::PlcfBtePapx, word_.paragraphPages().parts());
    const OverlongRuns& overlong = word_.overlongRuns();
    table_.put(FibPair::Clx,
               encodeClx({overlong.modified(pieces(content, parts)), overlong.modifiers()}));
}

void DocumentSession::writeBookmarks(const DocumentContent& content, const Parts& parts) {
    std::vector<Bookmark> all;
    std::copy_if(content.bookmarks.begin(), content.bookmarks.end(), std::back_inserter(all),
                 [](const Bookmark& bookmark) { return !bookmark.comment; });
    all.insert(all.end(), marks_.begin(), marks_.end());
    Cp limit = parts.length();
    for (Bookmark& bookmark : all) {
        bookmark.start = parts.placed(bookmark.start);
        bookmark.end = parts.placed(bookmark.end);
        limit = std::max(limit, bookmark.end);
    }
    const std::vector<Bookmark> aside = bookmarksAside(parts.side, parts.lengths.text);
    all.insert(all.end(), aside.begin(), aside.end());
    if (parts.bullets != 0) {
        all.push_back(bulletPicturesMark(parts.lengths.text, parts.bullets));
    }
    const BookmarkTables bookmarks = encodeBookmarks(all, limit);
    table_.put(FibPair::SttbfBkmk, bookmarks.names);
    table_.put(FibPair::PlcfBkf, bookmarks.starts);
    table_.put(FibPair::PlcfBkl, bookmarks.ends);
}

void DocumentSession::writeSideStories(const DocumentContent& content, const Parts& parts) {
    std::unordered_map<std::uint32_t, CommentRange> ranges;
    for (const Bookmark& range : content.bookmarks) {
        if (range.comment && range.start < range.end) {
            ranges.emplace(*range.comment,
                           CommentRange{parts.placed(range.start), parts.placed(range.end)});
        }
    }
    for (std::size_t i = 0; i < sideParts.size(); ++i) {
        std::vector<SidePlace> places;
        std::size_t ranged = 0;
        for (const SideReference& reference : parts.references[i]) {
            const auto range = ranges.find(reference.index);
            ranged += range != ranges.end() ? 1 : 0;
            places.push_back({reference.at,
                              {reference.start, reference.length},
                              content.tables.sideStories[reference.index],
                              range != ranges.end() ? std::optional(range->second) : std::nullopt});
        }
        encodeSidePlaces(sideParts[i].kind, places, parts.lengths.text, parts.length(),
                         [&](FibPair pair, const Bytes& table) { table_.put(pair, table); });
        if (sideParts[i].kind == AnchorKind::comment) {
            rangesWithoutRoom_ = ranged - std::min(ranged, mostCommentRanges);
        }
    }
}

void DocumentSession::writeFib(const Parts& parts) {
    Fib fib;
    saves_ = started_ ? static_cast<std::uint16_t>(std::min(saves_ + 1, mostCountedSaves)) : saves_;
    fib.fComplex = started_ || !word_.overlongRuns().modifiers().empty();
    fib.quickSaves = saves_;
    fib.fHasPic = data_.holdsBlobs();
    fib.fcMin = WordStream::fibRoom;
    fib.fcMac = word_.textLimit();
    fib.cbMac = word_.size();
    fib.ccp = parts.lengths;
    for (std::size_t i = 0; i < Fib::pairsOfWord2003; ++i) {
        const auto pair = static_cast<FibPair>(i);
        fib.set(pair, table_.place(pair));
    }
    word_.putFib(encodeFib(fib));
}

} // namespace qvnd::word
