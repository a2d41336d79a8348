#include "platform/word/docfile/reader/DocumentReader.h"

#include "platform/word/docfile/container/CopyBudget.h"
#include "platform/word/docfile/container/FormatError.h"
#include "platform/word/docfile/document/Excerpt.h"
#include "platform/word/docfile/format/Plc.h"
#include "platform/word/docfile/format/SpecialCharacters.h"
#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/TextParts.h"
#include "platform/word/docfile/formatting/Sections.h"
#include "platform/word/docfile/pictures/CarriedDrawings.h"
#include "platform/word/docfile/pictures/TextBoxes.h"
#include "platform/word/docfile/reader/BoxTexts.h"
#include "platform/word/docfile/reader/DocumentInformation.h"
#include "platform/word/docfile/reader/FormattedText.h"
#include "platform/word/docfile/styles/FontTable.h"
#include "platform/word/docfile/styles/ListTables.h"
#include "platform/word/docfile/styles/StyleSheetTable.h"
#include "platform/word/docfile/text/BookmarkTables.h"
#include "platform/word/docfile/text/BulletPictures.h"
#include "platform/word/docfile/text/HeaderStory.h"
#include "platform/word/docfile/text/RevisionAuthors.h"
#include "platform/word/docfile/text/RowRepair.h"
#include "platform/word/docfile/text/SideStories.h"
#include "platform/word/docfile/text/StoryRepair.h"
#include "platform/word/docfile/text/TableRepair.h"

#include <algorithm>
#include <map>
#include <unordered_set>

namespace qvnd::word {

namespace {

void remarkOn(Remarks& remarks, int count, std::u16string_view what) {
    if (count > 0) {
        remarks.push_back(u"有 " + digits(count) + std::u16string(what));
    }
}

// Reads one document; the steps stand in read().
class ReadingSteps {
public:
    ReadingSteps(OpenedDocument document, Remarks remarks) : document_(std::move(document)) {
        data_.unread.remarks = std::move(remarks);
    }

    DocumentContent read() {
        readTables();
        PropertyExpansion expansion({document_.data, document_.wordDocument.size()},
                                    document_.objects, data_.tables);
        const PieceTable pieces = readPieceTable(document_, data_.unread.remarks);
        readSectionPlaces(mainLength(pieces));
        text_ = readFormattedText(document_, pieces, sectionEnds(), expansion, lists(),
                                  data_.unread.remarks);
        readMain(mainLength(pieces));
        readBookmarks();
        readDrawings(Drawings(document_.part(FibPair::DggInfo), document_.wordDocument));
        readHeaders();
        readRest();
        readSideStories();
        remarkOn(data_.unread.remarks, expansion.damagedLists(),
                 u" 种格式已损坏，未能全部读出，用它们的文字可能与原来不同。");
        remarkOnStories();
        countUnread();
        data_.tables.bulletPictures =
            takeBulletPictures(main_, data_, lists(), data_.unread.remarks);
        data_.main = slicesOf(std::move(main_));
        return std::move(data_);
    }

private:
    PropertyLists& lists() { return data_.tables.lists; }

    void readTables() {
        DocumentTables& tables = data_.tables;
        Remarks& remarks = data_.unread.remarks;
        tables.styles = decodeStyleSheet(document_.part(FibPair::Stshf), lists(), remarks);
        tables.fonts = decodeFonts(document_.part(FibPair::SttbfFfn), remarks);
        tables.listDefinitions =
            decodeListDefinitions(document_.partOn(FibPair::PlfLst), lists(), remarks);
        tables.listOverrides =
            decodeListOverrides(document_.part(FibPair::PlfLfo), lists(), remarks);
        completeListDefinitions(tables.listDefinitions, tables.listOverrides);
        decodeListNames(document_.part(FibPair::SttbListNames), tables.listDefinitions);
        remarkOn(remarks, leaveOutUnnamedLists(tables.listDefinitions, tables.listOverrides),
                 u" 个列表定义未读入，一个文档最多 2046 个列表");
        tables.authors = decodeRevisionAuthors(document_.part(FibPair::SttbfRMark), remarks);
    }

    static Cp lengthOf(const PieceTable& pieces) {
        std::uint64_t length = 0;
        for (const Piece& piece : pieces.pieces) {
            length += piece.length;
        }
        return static_cast<Cp>(std::min<std::uint64_t>(length, 0x7FFFFFFF));
    }

    Cp mainLength(const PieceTable& pieces) const {
        return std::min(document_.fib.ccp.text, lengthOf(pieces));
    }

    std::vector<FieldMark> fieldsOf(TextPart part) const {
        return decodeFields(document_.part(factsOf(part).fields));
    }

    struct PartPlace {
        Cp start = 0;
        Cp length = 0;
    };

    // What of the part there is in the text.
    PartPlace placeOf(TextPart part) const {
        const PartLengths& ccp = document_.fib.ccp;
        const auto start =
            static_cast<Cp>(std::min<std::uint64_t>(startOf(part, ccp), text_.size()));
        return {start, std::min(word::lengthOf(part, ccp), text_.size() - start)};
    }

    std::vector<Cp> sectionEnds() const {
        std::vector<Cp> ends;
        Cp end = 0;
        for (const SectionPlace& place : places_) {
            ends.push_back(end += place.length);
        }
        return ends;
    }

    // A story with its fields; what claims to be a field or a picture and is none is blanked out.
    Story story(Cp start, Cp length, std::span<const FieldMark> fields) {
        Story result = text_.part(start, length);
        MatchedFields matched = matchFields(fields, result.text);
        damagedFields_ += matched.damage;
        result.fields = std::move(matched.marks);
        result.bookmarks = takeBookmarks(start, length);
        strayFields_ += static_cast<int>(matched.strays.size());
        blankOut(result, matched.strays, lists());
        const std::vector<Cp> lost = picturesWithoutData(result, lists());
        lostPictures_ += static_cast<int>(lost.size());
        blankOut(result, lost, lists());
        repairedStyles_ += repairStyles(result, data_.tables.styles);
        repairedTables_ += repairTables(result, lists());
        repairedRows_ += repairRows(result, lists());
        closeWithParagraphMark(result);
        return result;
    }

    void readMain(Cp length) {
        if (text_.size() < length || document_.fib.ccp.text > length) {
            data_.unread.remarks.emplace_back(u"正文不完整，只读出了文件中存在的部分。");
        }
        main_ = story(0, length, fieldsOf(TextPart::main));
        joinSectionsWithoutBreak();
        Cp total = 0;
        for (const SectionPlace& place : places_) {
            const int before = damagedSections_;
            data_.sections.push_back({place.length, sectionProperties(place)});
            if (before == 0 && damagedSections_ > 0) {
                damagedSection_ = wordsFrom(main_.text, total);
            }
            total += place.length;
        }
        data_.sections.back().length += main_.size() - total;
    }

    // A file without the table has one section and no layout of its own to lose.
    void readSectionPlaces(Cp length) {
        const ByteView table = document_.part(FibPair::PlcfSed);
        int damage = 0;
        places_ = decodeSections(table, length, &damage);
        remarkOn(data_.unread.remarks, table.empty() ? 0 : damage,
                 u" 节的位置已损坏，已与相邻的节合并。");
    }

    // A section other than the last ends in its break; a boundary without one is none. The text
    // before it belongs to the section whose break comes next.
    void joinSectionsWithoutBreak() {
        std::vector<SectionPlace> joined;
        Cp end = 0;
        Cp pending = 0;
        for (std::size_t i = 0; i < places_.size(); ++i) {
            SectionPlace place = places_[i];
            end += place.length;
            const bool last = i + 1 == places_.size();
            if (last || (end <= main_.size() && main_.text[end - 1] == special::pageBreak)) {
                place.length += pending;
                pending = 0;
                joined.push_back(place);
            } else {
                pending += place.length;
            }
        }
        remarkOn(data_.unread.remarks, static_cast<int>(places_.size() - joined.size()),
                 u" 个分节符已损坏，相应的节已合并。");
        places_ = std::move(joined);
    }

    PropertyListId sectionProperties(const SectionPlace& place) {
        if (!place.sepx) {
            return PropertyListId::empty;
        }
        try {
            const ByteView list = decodeSepx(document_.wordDocument, *place.sepx);
            if (!sectionBudget_.take(list.size())) {
                throw FormatError(FormatError::Kind::damaged, "sections lie over each other");
            }
            Bytes kept;
            for (const SprmView& entry : parseSprms(list).sprms) {
                if (groupOf(entry.opcode) == SprmGroup::section) {
                    kept.insert(kept.end(), entry.whole.begin(), entry.whole.end());
                }
            }
            return lists().intern(kept);
        } catch (const FormatError&) {
            ++damagedSections_;
            return PropertyListId::empty;
        }
    }

    void readHeaders() {
        data_.headers.resize(data_.sections.size());
        const auto [start, length] = placeOf(TextPart::headers);
        const std::size_t most = places_.back().number + 1;
        int damage = 0;
        const ByteView table = document_.part(FibPair::PlcfHdd);
        const HeaderPlaces separators = decodeSeparators(table, length, &damage);
        const auto headers = decodeHeaders(table, length, most, &damage);
        remarkOn(data_.unread.remarks, damage, u" 处页眉或页脚已损坏，未能读出。");
        const auto fields = fieldsOf(TextPart::headers);
        data_.separators = headerSet(separators, start, fields);
        for (std::size_t i = 0; i < places_.size(); ++i) {
            if (places_[i].number < headers.size()) {
                data_.headers[i] = headerSet(headers[places_[i].number], start, fields);
            }
        }
    }

    HeaderSet headerSet(const HeaderPlaces& places, Cp start,
                        const std::vector<FieldMark>& fields) {
        HeaderSet set;
        for (std::size_t i = 0; i < places.size(); ++i) {
            if (places[i]) {
                std::vector<FieldMark> own;
                appendMarks(own, fields, places[i]->start, places[i]->length, 0);
                Story header = story(start + places[i]->start, places[i]->length, own);
                appendMarks(header.anchors, headerAnchors_, places[i]->start, places[i]->length, 0);
                set[i] = slicesOf(std::move(header));
            }
        }
        return set;
    }

    // Those of other texts wait for the text that they stand in.
    void readBookmarks() {
        std::vector<Bookmark> all =
            decodeBookmarks({document_.part(FibPair::SttbfBkmk), document_.part(FibPair::PlcfBkf),
                             document_.part(FibPair::PlcfBkl)},
                            main_.size(), text_.size(), data_.unread.remarks);
        for (Bookmark& bookmark : all) {
            if (bookmark.end <= main_.size()) {
                data_.bookmarks.push_back(std::move(bookmark));
            } else {
                aside_.emplace(bookmark.start, std::move(bookmark));
            }
        }
    }

    // What begins in that stretch of text ends in it. The mark behind a header belongs to no text.
    std::vector<Bookmark> takeBookmarks(Cp start, Cp length) {
        std::vector<Bookmark> taken;
        const auto first = aside_.lower_bound(start);
        const auto last = aside_.lower_bound(start + length);
        for (auto place = first; place != last; ++place) {
            Bookmark& bookmark = taken.emplace_back(std::move(place->second));
            bookmark.start -= start;
            cutBookmarks_ += bookmark.end - start > length + 1 ? 1 : 0;
            bookmark.end = std::min(bookmark.end - start, length);
        }
        aside_.erase(first, last);
        return taken;
    }

    void readRest() {
        const ByteView dop = document_.part(FibPair::Dop);
        data_.settings.assign(dop.begin(), dop.end());
        data_.information = takeInformation(document_, data_.unread.remarks);
    }

    void readSideStories() {
        for (const SidePart& row : sideParts) {
            const auto [start, length] = placeOf(row.part);
            const std::vector<FieldMark> fields = fieldsOf(row.part);
            const TableSource table = [&](FibPair pair) { return document_.part(pair); };
            for (SidePlace& place :
                 decodeSidePlaces(row.kind, table, main_.size(), length, damagedSides_)) {
                if (standsFor(row.part, place.at, place.story.automatic)) {
                    place.story.text = sideText(start, place.text, fields);
                    addSideStory(row.kind, std::move(place));
                }
            }
        }
        damagedTexts_ += sortAnchors(main_.anchors);
    }

    void addSideStory(AnchorKind kind, SidePlace place) {
        std::vector<SideStory>& stories = data_.tables.sideStories;
        const auto index = static_cast<std::uint32_t>(stories.size());
        main_.anchors.push_back({place.at, kind, index});
        stories.push_back(std::move(place.story));
        if (place.range) {
            data_.bookmarks.push_back({u"", place.range->start, place.range->end, 0, index});
        }
    }

    // Of two at one place the first stays. Answers how many go.
    static int sortAnchors(std::vector<Anchor>& anchors) {
        std::stable_sort(anchors.begin(), anchors.end(),
                         [](const Anchor& a, const Anchor& b) { return a.at < b.at; });
        const auto second =
            std::unique(anchors.begin(), anchors.end(),
                        [](const Anchor& a, const Anchor& b) { return a.at == b.at; });
        const auto gone = static_cast<int>(anchors.end() - second);
        anchors.erase(second, anchors.end());
        return gone;
    }

    ByteView tableOf(const std::optional<PositionTable>& table) const {
        return table ? document_.part(table->pair) : ByteView{};
    }

    // Whether the character there may stand for a text of that part. A mark of the user's own may
    // be any character.
    bool standsFor(TextPart part, Cp at, bool automatic) {
        const bool there =
            at < main_.size() && (!automatic || main_.text[at] == factsOf(part).anchor);
        damagedTexts_ += there ? 0 : 1;
        return there;
    }

    std::shared_ptr<const Story> sideText(Cp partStart, const TextPlace& place,
                                          const std::vector<FieldMark>& fields) {
        std::vector<FieldMark> own;
        appendMarks(own, fields, place.start, place.length, 0);
        return std::make_shared<const Story>(story(partStart + place.start, place.length, own));
    }

    // Shapes with all that they show; their anchors become those of the stories.
    void readDrawings(const Drawings& drawings) {
        CarriedDrawings carried(drawings, document_.objects, data_.tables);
        main_.anchors = readDrawingsOf(TextPart::main, TextPart::textBoxes, FibPair::PlcfTxbxBkd,
                                       DrawingOf::main, carried);
        headerAnchors_ = readDrawingsOf(TextPart::headers, TextPart::headerTextBoxes,
                                        FibPair::PlcfTxbxHdrBkd, DrawingOf::headers, carried);
        data_.unread.textBoxes = countTextBoxes(document_.part(FibPair::PlcftxbxTxt)) +
                                 countTextBoxes(document_.part(FibPair::PlcfHdrtxbxTxt)) -
                                 static_cast<int>(data_.tables.shapeTexts.size());
        data_.tables.background = carried.background();
        if (carried.damagedBackground()) {
            data_.unread.remarks.emplace_back(u"页面背景已损坏，未能读出。");
        }
        remarkOn(data_.unread.remarks, carried.damagedMembers(),
                 u" 个组合图形中的图形已损坏，未能读出。");
        remarkOn(data_.unread.remarks, carried.picturesWithoutRoom(),
                 u" 张图形的图片未能读出，一个文档最多 4095 张。");
        remarkOn(data_.unread.remarks, carried.withoutDefaults(),
                 u" 个图形的默认格式过于繁复，未能读出。");
    }

    // The anchors of drawings over one part of the text, ascending: each at a character of its own
    // that stands for a drawing.
    std::vector<Anchor> readDrawingsOf(TextPart over, TextPart boxes, FibPair breaks,
                                       DrawingOf part, CarriedDrawings& carried) {
        const TextPartFacts& facts = factsOf(boxes);
        const auto [start, length] = placeOf(boxes);
        const std::vector<FieldMark> fields = fieldsOf(boxes);
        BoxTexts texts(
            readBoxTexts(tableOf(facts.texts), document_.part(breaks), length),
            [&, start = start](const BoxText& text) {
                auto& pool = data_.tables.shapeTexts;
                pool.push_back({sideText(start, {text.start, text.length}, fields), text.breaks});
                return static_cast<std::uint32_t>(pool.size() - 1);
            });
        const CarriedDrawings::Texts named{[&](std::uint16_t row) { return texts.index(row); },
                                           [&](std::uint32_t shape) { return texts.rowOf(shape); }};
        std::vector<Anchor> anchors;
        std::unordered_set<Cp> taken;
        const Plc places = decodePlc(tableOf(facts.references), facts.references->elementSize);
        for (std::size_t i = 0; i < places.count(); ++i) {
            const Cp at = places.positions[i];
            if (!isDrawing(over, at) || !taken.insert(at).second) {
                continue;
            }
            if (const auto drawing = carried.add(part, places.element(i), named)) {
                anchors.push_back({at, AnchorKind::drawing, *drawing});
            }
        }
        std::sort(anchors.begin(), anchors.end(),
                  [](const Anchor& a, const Anchor& b) { return a.at < b.at; });
        return anchors;
    }

    bool isDrawing(TextPart over, Cp at) const {
        const auto [start, length] = placeOf(over);
        return at < length && text_.text[start + at] == factsOf(TextPart::textBoxes).anchor;
    }

    // The paragraph that refers to the first note or comment that was not read.
    std::u16string firstUnreadSide() const {
        if (damagedTexts_ + damagedSides_.texts == 0) {
            return {};
        }
        const auto isRead = [this](Cp at) {
            const auto anchor =
                std::lower_bound(main_.anchors.begin(), main_.anchors.end(), at,
                                 [](const Anchor& a, Cp position) { return a.at < position; });
            return anchor != main_.anchors.end() && anchor->at == at;
        };
        Cp first = main_.size();
        for (const SidePart& row : sideParts) {
            const PositionTable& table = *factsOf(row.part).references;
            const Plc there = decodePlc(document_.part(table.pair), table.elementSize);
            for (std::size_t i = 0; i < there.count(); ++i) {
                const Cp at = there.positions[i];
                first = at < first && !isRead(at) ? at : first;
            }
        }
        return first < main_.size() ? wordsOfParagraph(main_.text, first) : std::u16string();
    }

    void countUnread() {
        for (const SidePart& row : sideParts) {
            const PositionTable& table = *factsOf(row.part).references;
            const auto read = std::count_if(main_.anchors.begin(), main_.anchors.end(),
                                            [&](const Anchor& a) { return a.kind == row.kind; });
            const Plc there = decodePlc(document_.part(table.pair), table.elementSize);
            data_.unread.sideStories[static_cast<std::size_t>(row.kind)] =
                static_cast<int>(there.count()) - static_cast<int>(read);
        }
        noteWhatIsNotRead(document_, data_.unread);
    }

    void remarkOnStories() {
        remarkOn(data_.unread.remarks, damagedSections_,
                 u" 节的页面设置已损坏，改用默认的纸张和页边距" + firstPlace(damagedSection_) +
                     u"。");
        remarkOn(data_.unread.remarks, damagedTexts_ + damagedSides_.texts,
                 u" 个脚注、尾注或批注已损坏，未能读出" + firstPlace(firstUnreadSide()) + u"。");
        remarkOn(data_.unread.remarks, damagedSides_.ranges,
                 u" 条批注所指的文字已无法确定，批注只保留了位置。");
        remarkOn(data_.unread.remarks, static_cast<int>(aside_.size()),
                 u" 个书签不在任何文字中，未读入。");
        remarkOn(data_.unread.remarks, cutBookmarks_,
                 u" 个书签跨越了几段独立的文字，只保留了第一段中的部分。");
        remarkOn(data_.unread.remarks, damagedFields_,
                 u" 处域标记与文件的记录不符，已按文字修复。");
        remarkOn(data_.unread.remarks, strayFields_, u" 个不成对的域标记已去掉。");
        remarkOn(data_.unread.remarks, lostPictures_, u" 张图片的数据不在文件中，未能读出。");
        remarkOn(data_.unread.remarks, repairedStyles_, u" 个段落的样式不存在，改用正文样式。");
        remarkOn(data_.unread.remarks, repairedTables_,
                 u" 个段落所在的表格行没有结束标记，已作为表格之外的段落读入。");
        remarkOn(data_.unread.remarks, repairedRows_, u" 个表格行的定义与其单元格不符，已修复。");
    }

    OpenedDocument document_;
    DocumentContent data_;
    Story main_;
    std::multimap<Cp, Bookmark> aside_; // bookmarks behind the main story, by their starts
    std::vector<SectionPlace> places_;
    FormattedText text_;
    std::vector<Anchor> headerAnchors_; // of drawings, in the part of the headers
    CopyBudget sectionBudget_{document_.wordDocument.size()};
    int damagedSections_ = 0;
    std::u16string damagedSection_; // the first words of the first one
    int damagedTexts_ = 0;          // of notes and comments
    int cutBookmarks_ = 0;          // that reach from one header, note or shape into the next
    int damagedFields_ = 0;
    int strayFields_ = 0;
    SideDamage damagedSides_; // what tables of notes and comments say of it
    int lostPictures_ = 0;
    int repairedStyles_ = 0;
    int repairedTables_ = 0;
    int repairedRows_ = 0;
};

} // namespace

DocumentContent readDocument(const std::filesystem::path& path) {
    Remarks remarks;
    OpenedDocument document = openDocument(path, remarks);
    return ReadingSteps(std::move(document), std::move(remarks)).read();
}

DocumentContent readDocument(ByteView file) {
    Remarks remarks;
    OpenedDocument document = openDocument(file, remarks);
    return ReadingSteps(std::move(document), std::move(remarks)).read();
}

} // namespace qvnd::word
