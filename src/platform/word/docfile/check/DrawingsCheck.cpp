#include "platform/word/docfile/check/Checks.h"
#include "platform/word/docfile/container/FormatError.h"
#include "platform/word/docfile/document/Remarks.h"
#include "platform/word/docfile/format/OfficeArt.h"
#include "platform/word/docfile/format/Plc.h"
#include "platform/word/docfile/format/ShapeProperties.h"
#include "platform/word/docfile/format/SpecialCharacters.h"
#include "platform/word/docfile/format/SprmCodes.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace qvnd::word {

namespace {

constexpr int deepestRecord = 80;

struct Record {
    art::RecordHeader header;
    ByteView content;
};

// The records that fill the bytes; nothing when they leave a gap.
std::optional<std::vector<Record>> recordsOf(ByteView bytes) {
    std::vector<Record> records;
    LittleEndianReader reader(bytes, "OfficeArt");
    while (!reader.atEnd()) {
        if (reader.remaining() < art::headerSize) {
            return std::nullopt;
        }
        const art::RecordHeader header = art::readHeader(reader);
        if (header.length > reader.remaining()) {
            return std::nullopt;
        }
        records.push_back({header, reader.view(header.length)});
    }
    return records;
}

// The same for bytes that are known to be whole.
std::vector<Record> innerRecords(ByteView bytes) { return recordsOf(bytes).value(); }

bool nests(const Record& record, int depth) {
    if (record.header.version != art::container) {
        return true;
    }
    const auto inner = recordsOf(record.content);
    if (!inner || depth > deepestRecord) {
        return false;
    }
    for (const Record& one : *inner) {
        if (!nests(one, depth + 1)) {
            return false;
        }
    }
    return true;
}

// Which text a shape shows, and which part of a chain it is.
struct ShownText {
    std::uint32_t shape = 0;
    std::size_t number = 0; // counted from 1
    std::size_t link = 0;
};

// One drawing: that of the main text or that of the headers.
struct DrawingFacts {
    TextPart host = TextPart::main;
    TextPart boxes = TextPart::textBoxes;
    FibPair breaks = FibPair::PlcfTxbxBkd;
    bool there = false;
    std::uint32_t number = 0;  // dgid
    std::uint32_t counted = 0; // csp: shapes, as the drawing counts them
    std::uint32_t shapes = 0;  // records of shapes, deleted ones too
    unsigned patriarchs = 0;
    std::map<std::uint32_t, std::uint32_t> anchored; // shape in no group: index of its anchor
    std::vector<ShownText> texts;
    const char16_t* name = u"正文";
};

class DrawingsCheck {
public:
    DrawingsCheck(const Evidence& evidence, Findings& findings)
        : evidence_(evidence), findings_(findings) {
        headers_.host = TextPart::headers;
        headers_.boxes = TextPart::headerTextBoxes;
        headers_.breaks = FibPair::PlcfTxbxHdrBkd;
        headers_.name = u"页眉";
    }

    void run() {
        try {
            readContent(evidence_.at(FibPair::DggInfo));
        } catch (const FormatError&) {
            findings_.add("drawing.records", u"图形记录不完整");
            return;
        }
        checkIdentifiers();
        checkLinks();
        if (areWhole_ && drawings_ != countedDrawings_) {
            findings_.add("drawing.count", u"记有 " + digits(countedDrawings_) + u" 组图形，实有 " +
                                               digits(drawings_) + u" 组");
        }
        for (const DrawingFacts* drawing : {&main_, &headers_}) {
            checkShapes(*drawing);
            checkAnchors(*drawing);
            checkTexts(*drawing);
            checkBreaks(*drawing);
        }
    }

private:
    void broken(std::u16string what) {
        areWhole_ = false;
        findings_.add("drawing.records", std::move(what));
    }

    void readContent(ByteView content) {
        LittleEndianReader reader(content, "OfficeArtContent");
        bool first = true;
        while (!reader.atEnd()) {
            const unsigned label = first ? 0 : reader.u8();
            Record record;
            record.header = art::readHeader(reader);
            record.content = reader.view(record.header.length);
            const std::uint16_t expected = first ? art::dggContainer : art::dgContainer;
            if (record.header.type != expected || label > 1 || !nests(record, 0)) {
                broken(u"绘图信息的第 " + hexadecimal(reader.position()) +
                       u" 字节之前不是图形记录");
                return;
            }
            if (first) {
                readShared(record.content);
            } else {
                readDrawing(label == 0 ? main_ : headers_, record.content);
            }
            first = false;
        }
    }

    void readShared(ByteView content) {
        for (const Record& record : innerRecords(content)) {
            if (record.header.type == art::fdggBlock) {
                readClusters(record.content);
            } else if (record.header.type == art::bstoreContainer) {
                for (const Record& entry : innerRecords(record.content)) {
                    ++pictures_;
                    checkPicture(entry);
                }
            }
        }
    }

    void readClusters(ByteView content) {
        LittleEndianReader reader(content, "OfficeArtFDGGBlock");
        largestId_ = reader.u32();
        const std::uint32_t count = reader.u32();
        reader.skip(4); // cspSaved: programs do not keep it
        countedDrawings_ = reader.u32();
        for (std::uint32_t i = 1; i < count; ++i) {
            const std::uint32_t drawing = reader.u32();
            clusters_.push_back({drawing, reader.u32()});
        }
    }

    // A picture outside of its entry is a record of the main stream. An entry may be empty.
    void checkPicture(const Record& entry) {
        if (entry.header.type != art::fbse || entry.content.size() != art::fbseSize) {
            return;
        }
        LittleEndianReader reader(entry.content, "OfficeArtFBSE");
        reader.seek(art::fbseSizeAt);
        const std::uint32_t size = reader.u32();
        const std::uint32_t references = reader.u32();
        const std::uint32_t at = reader.u32();
        if (references == 0 || size == 0 || at == 0xFFFFFFFF) {
            return;
        }
        LittleEndianReader stream(evidence_.word, "OfficeArtBlip");
        const bool inside =
            at <= evidence_.word.size() && evidence_.word.size() - at >= art::headerSize;
        if (inside) {
            stream.seek(at);
            const art::RecordHeader picture = art::readHeader(stream);
            if (art::isBlip(picture.type) && picture.length <= stream.remaining()) {
                return;
            }
        }
        findings_.add("drawing.picture", u"第 " + digits(std::int64_t(pictures_)) +
                                             u" 张图形图片不在主文档流的 " + hexadecimal(at));
    }

    void readDrawing(DrawingFacts& drawing, ByteView content) {
        if (drawing.there) {
            broken(std::u16string(drawing.name) + u"有两组图形");
        }
        drawing.there = true;
        ++drawings_;
        for (const Record& record : innerRecords(content)) {
            if (record.header.type == art::fdg) {
                drawing.number = record.header.instance;
                drawing.counted = LittleEndianReader(record.content, "OfficeArtFDG").u32();
            }
        }
        for (const Record& record : innerRecords(content)) {
            if (record.header.type == art::spgrContainer) {
                readGroup(drawing, record.content, 0);
            } else if (record.header.type == art::spContainer) {
                readShape(drawing, record.content, false);
            }
        }
    }

    // `depth` is 0 for the group of the whole drawing: what it holds is anchored.
    void readGroup(DrawingFacts& drawing, ByteView content, int depth) {
        bool first = true;
        for (const Record& record : innerRecords(content)) {
            if (record.header.type == art::spContainer) {
                readShape(drawing, record.content, first ? depth == 1 : depth == 0);
            } else if (record.header.type == art::spgrContainer) {
                readGroup(drawing, record.content, depth + 1);
            }
            first = false;
        }
    }

    void readShape(DrawingFacts& drawing, ByteView content, bool outermost) {
        const std::vector<Record> records = innerRecords(content);
        std::uint32_t id = 0;
        std::uint32_t flags = 0;
        std::uint32_t anchor = 0;
        std::uint32_t text = 0;
        for (const Record& record : records) {
            LittleEndianReader reader(record.content, "OfficeArtSpContainer");
            if (record.header.type == art::fsp) {
                id = reader.u32();
                flags = reader.u32();
            } else if (record.header.type == art::clientAnchor) {
                anchor = reader.u32();
            } else if (record.header.type == art::clientTextbox) {
                text = reader.u32();
            } else if (record.header.type == art::fopt) {
                const art::ShapeProperties properties(record.content, record.header.instance);
                text = properties.value(art::textOfShape).value_or(text);
                checkPictures(properties, id);
                noteLinks(properties, id);
            }
        }
        ++drawing.shapes;
        drawing.patriarchs += (flags & art::shapeIsPatriarch) != 0 ? 1 : 0;
        if ((flags & art::shapeIsDeleted) != 0) {
            return;
        }
        if (!ids_.emplace(id, drawing.number).second) {
            findings_.add("drawing.id", u"图形编号 " + hexadecimal(id) + u" 用了两次");
        }
        if (outermost) {
            drawing.anchored.emplace(id, anchor);
        }
        if (text >> 16 != 0) {
            drawing.texts.push_back({id, text >> 16, text & 0xFFFF});
        }
    }

    void checkPictures(const art::ShapeProperties& properties, std::uint32_t id) {
        for (const art::ShapeProperties::Entry& entry : properties.entries()) {
            if (entry.namesBlip && entry.value > pictures_) {
                findings_.add("drawing.picture", u"图形 " + hexadecimal(id) + u" 的图片 " +
                                                     digits(entry.value) + u" 不存在");
            }
        }
    }

    void noteLinks(const art::ShapeProperties& properties, std::uint32_t id) {
        for (const std::uint16_t opid : {art::nextShape, art::masterShape}) {
            const std::uint32_t other = properties.value(opid).value_or(0);
            if (other != 0) {
                links_.push_back({id, other});
            }
        }
    }

    void checkLinks() {
        for (const Link& link : links_) {
            if (!ids_.contains(link.to)) {
                findings_.add("drawing.link", u"图形 " + hexadecimal(link.from) + u" 所指的图形 " +
                                                  hexadecimal(link.to) + u" 不存在");
            }
        }
    }

    // Programs count the background, which stands in no group, or they do not.
    void checkShapes(const DrawingFacts& drawing) {
        if (drawing.there && drawing.counted != drawing.shapes &&
            drawing.counted + 1 != drawing.shapes) {
            findings_.add("drawing.count", std::u16string(drawing.name) + u"记有 " +
                                               digits(drawing.counted) + u" 个图形，实有 " +
                                               digits(drawing.shapes) + u" 个");
        }
        if (drawing.there && drawing.patriarchs != 1) {
            findings_.add("drawing.group",
                          std::u16string(drawing.name) + u"的图形没有一个共同的组");
        }
    }

    // Every shape lies in a cluster of its drawing, below what is given out of it.
    void checkIdentifiers() {
        for (const auto& [id, drawing] : ids_) {
            const std::size_t cluster = id / art::clusterSize;
            const bool known = cluster >= 1 && cluster <= clusters_.size();
            if (!known || clusters_[cluster - 1].drawing != drawing ||
                id % art::clusterSize >= clusters_[cluster - 1].used || id > largestId_) {
                findings_.add("drawing.id",
                              u"图形编号 " + hexadecimal(id) + u" 不在其绘图的编号段");
            }
        }
    }

    void checkAnchors(const DrawingFacts& drawing) {
        const PositionTable& table = *factsOf(drawing.boxes).references;
        const Plc anchors = decodePlc(evidence_.at(table.pair), table.elementSize);
        const Cp from = evidence_.partBegin(drawing.host);
        std::set<std::uint32_t> shapes;
        for (std::size_t i = 0; i < anchors.count(); ++i) {
            const std::uint32_t shape = LittleEndianReader(anchors.element(i), "Spa").u32();
            const auto found = drawing.anchored.find(shape);
            const std::u16string where = placeOf(evidence_, from + anchors.positions[i]);
            if (found == drawing.anchored.end() || !shapes.insert(shape).second) {
                findings_.add("drawing.anchor",
                              where + u"的图形 " + hexadecimal(shape) + u" 不存在或已有锚点");
            } else if (found->second != i) {
                findings_.add("drawing.anchor",
                              u"图形 " + hexadecimal(shape) + u" 所记的锚点序号不对");
            }
            checkAnchorMark(from + anchors.positions[i], where);
        }
        if (shapes.size() < drawing.anchored.size()) {
            findings_.add("drawing.anchor", std::u16string(drawing.name) + u"有图形没有锚点");
        }
    }

    void checkAnchorMark(Cp cp, const std::u16string& where) {
        if (evidence_.text.empty()) {
            return;
        }
        if (cp >= evidence_.text.size() || evidence_.text[cp] != special::drawing ||
            evidence_.characterFlag(cp, sprm::CFSpec) == 0) {
            findings_.add("drawing.mark", where + u"应为图形的锚点");
        }
    }

    // A shape with text names an entry of the table, which names the first shape of the chain.
    void checkTexts(const DrawingFacts& drawing) {
        constexpr std::size_t boxSize = 22;
        const TextPartFacts& facts = factsOf(drawing.boxes);
        const Plc boxes = decodePlc(evidence_.at(facts.texts->pair), boxSize);
        const std::size_t count = boxes.count() == 0 ? 0 : boxes.count() - 1;
        std::map<std::size_t, std::multiset<std::size_t>> chains; // the links of each text
        for (const ShownText& text : drawing.texts) {
            if (text.number > count || !isBoxOf(boxes.element(text.number - 1), text)) {
                findings_.add("drawing.text",
                              u"图形 " + hexadecimal(text.shape) + u" 的文字不在文本框的表中");
            } else {
                chains[text.number].insert(text.link);
            }
        }
        for (std::size_t i = 0; i < count; ++i) {
            checkBox(drawing, boxes, i, chains[i + 1]);
        }
    }

    // A chain has each of its links once.
    static bool isWithoutGap(const std::multiset<std::size_t>& links) {
        std::size_t next = 0;
        return std::all_of(links.begin(), links.end(),
                           [&next](std::size_t link) { return link == next++; });
    }

    static bool isForReuse(ByteView box) { return (box[8] & 1U) != 0; }

    static bool isBoxOf(ByteView box, const ShownText& text) {
        LittleEndianReader reader(box, "FTXBXS");
        reader.seek(14);
        return !isForReuse(box) && (text.link != 0 || reader.u32() == text.shape);
    }

    void checkBox(const DrawingFacts& drawing, const Plc& boxes, std::size_t i,
                  const std::multiset<std::size_t>& links) {
        if (isForReuse(boxes.element(i))) {
            return;
        }
        const std::u16string what =
            std::u16string(factsOf(drawing.boxes).name) + u"第 " + digits(std::int64_t(i) + 1);
        // A text may be left of a shape that has none any more.
        if (!links.empty() &&
            LittleEndianReader(boxes.element(i), "FTXBXS").u32() != links.size()) {
            findings_.add("drawing.text", what + u" 段文字的图形个数不对");
        }
        if (!isWithoutGap(links)) {
            findings_.add("drawing.text", what + u" 段文字的图形不连续");
        }
        const std::size_t last =
            std::size_t{evidence_.partBegin(drawing.boxes)} + boxes.positions[i + 1] - 1;
        if (!evidence_.text.empty() &&
            (last >= evidence_.text.size() || evidence_.text[last] != special::paragraphMark)) {
            findings_.add("drawing.text", what + u" 段文字没有以段落标记结束");
        }
    }

    // Each part of a chain has its stretch of the chain's text.
    void checkBreaks(const DrawingFacts& drawing) {
        constexpr std::size_t breakSize = 6;
        constexpr std::size_t boxSize = 22;
        const Plc breaks = decodePlc(evidence_.at(drawing.breaks), breakSize);
        const Plc boxes = decodePlc(evidence_.at(factsOf(drawing.boxes).texts->pair), boxSize);
        std::set<std::size_t> shown;
        for (std::size_t i = 0; i + 1 < breaks.count(); ++i) {
            const auto box =
                static_cast<std::uint16_t>(LittleEndianReader(breaks.element(i), "Tbkd").u16());
            shown.insert(box);
            if (box + std::size_t{1} >= boxes.count() ||
                breaks.positions[i] < boxes.positions[box] ||
                breaks.positions[i + 1] > boxes.positions[box + std::size_t{1}]) {
                findings_.add("drawing.break", std::u16string(factsOf(drawing.boxes).name) +
                                                   u"的第 " + digits(std::int64_t(i) + 1) +
                                                   u" 段分界不在其文字之内");
            }
        }
        for (std::size_t i = 0; i + 1 < boxes.count(); ++i) {
            if (!isForReuse(boxes.element(i)) && !shown.contains(i)) {
                findings_.add("drawing.break", std::u16string(factsOf(drawing.boxes).name) +
                                                   u"第 " + digits(std::int64_t(i) + 1) +
                                                   u" 段文字没有分界");
            }
        }
    }

    struct Link {
        std::uint32_t from = 0;
        std::uint32_t to = 0;
    };

    struct Cluster {
        std::uint32_t drawing = 0;
        std::uint32_t used = 0;
    };

    const Evidence& evidence_;
    Findings& findings_;
    DrawingFacts main_;
    DrawingFacts headers_;
    std::uint32_t largestId_ = 0;
    std::vector<Cluster> clusters_;
    std::vector<Link> links_;           // shapes that others name
    std::uint32_t countedDrawings_ = 0; // cdgSaved
    std::uint32_t drawings_ = 0;
    bool areWhole_ = true;                       // the records were read to their end
    std::uint32_t pictures_ = 0;                 // entries of the store
    std::map<std::uint32_t, std::uint32_t> ids_; // shape: its drawing
};

} // namespace

void checkDrawings(const Evidence& evidence, Findings& findings) {
    DrawingsCheck(evidence, findings).run();
}

} // namespace qvnd::word
