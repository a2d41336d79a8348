#pragma once

#include "platform/word/docfile/document/DocumentContent.h"
#include "platform/word/docfile/objects/ObjectPool.h"
#include "platform/word/docfile/styles/ListDefinitionEncoder.h"
#include "platform/word/docfile/text/BulletPictures.h"
#include "platform/word/docfile/text/HeaderStory.h"
#include "platform/word/docfile/text/SideStories.h"
#include "platform/word/docfile/writer/DrawingEncoder.h"
#include "platform/word/docfile/writer/DrawingParts.h"
#include "platform/word/docfile/writer/SideText.h"
#include "platform/word/docfile/writer/TableStream.h"
#include "platform/word/docfile/writer/WordStream.h"

#include <memory>
#include <span>
#include <unordered_map>
#include <vector>

namespace qvnd::word {

// One Word document in one compound file, from its creation through all its saves. An exception
// out of write() or commit() ends it: only abandon() may follow.
class DocumentSession {
public:
    explicit DocumentSession(std::unique_ptr<OutputFile> file);

    // Brings the streams to the document. The first call lays it out in reading order, in one
    // piece; later ones append what is new.
    void write(const DocumentContent& content);

    // Bookmarks that the file bears besides those of the document.
    void setMarks(std::vector<Bookmark> marks) { marks_ = std::move(marks); }

    CompoundStore& store() { return store_; }

    // Property lists of characters of which the file has the first part only.
    std::size_t cutLists() const { return word_.overlongRuns().withoutRoom(); }

    // Comments whose text the file does not name.
    std::size_t rangesWithoutRoom() const { return rangesWithoutRoom_; }

private:
    // The parts of the text, each in slices.
    struct Parts {
        // The main story with the pictures of bullets; empty where there are none.
        SlicedText withBullets;
        Cp bullets = 0;
        struct Stretch { // of the slices of `side`
            std::size_t begin = 0;
            std::size_t count = 0;
        };
        std::array<Stretch, textParts.size()> texts; // by TextPart, but that of the main story
        PartLengths lengths;
        std::array<std::vector<SideReference>, sideParts.size()> references;
        Bytes plcfHdd;
        const DrawingPart* drawings = nullptr;       // those of the main story
        const DrawingPart* headerDrawings = nullptr; // those of the headers
        // All of them, one behind the other; a document with any ends in one more mark.
        SlicedText side;

        const SlicedText& main(const DocumentContent& content) const {
            return bullets == 0 ? content.main : withBullets;
        }
        std::span<const StorySlice> text(TextPart part, const DocumentContent& content) const {
            const Stretch& stretch = texts[static_cast<std::size_t>(part)];
            return part == TextPart::main
                       ? std::span<const StorySlice>(main(content))
                       : std::span<const StorySlice>(side).subspan(stretch.begin, stretch.count);
        }
        // Where a position of the main story lies in that of the file.
        Cp placed(Cp at) const { return at < lengths.text - bullets ? at : at + bullets; }
        // Without the mark that ends all text.
        Cp length() const { return lengths.text + static_cast<Cp>(lengths.sideTotal()); }
    };

    Parts partsOf(const DocumentContent& content);
    void writeText(const DocumentContent& content, const Parts& parts, FileProperties& properties);
    void writeTables(const DocumentContent& content);
    void writePositions(const DocumentContent& content, const Parts& parts);
    void writeBookmarks(const DocumentContent& content, const Parts& parts);
    void writeSideStories(const DocumentContent& content, const Parts& parts);
    void writeDrawings(const DocumentContent& content, const Parts& parts);
    void writeSections(const DocumentContent& content, const Parts& parts,
                       FileProperties& properties);
    void writeInformation(const DocumentInformation& information);
    void writeFib(const Parts& parts);
    std::vector<Piece> pieces(const DocumentContent& content, const Parts& parts);

    CompoundStore store_;
    WordStream word_;
    std::unordered_map<PropertyListId, std::uint32_t> sectionPlaces_;
    DataStream data_;
    ObjectPool objects_;
    TableStream table_;
    FragmentPlaces main_;
    FragmentPlaces side_; // what lies behind the main story
    FragmentCopies copies_;
    BulletPictureText bullets_;
    std::shared_ptr<const Story> mark_ = lonelyMark(); // closes parts and headers
    ListDefinitionEncoder listDefinitions_;
    DrawingGathering mainDrawings_{mark_};
    DrawingGathering headerDrawings_{mark_};
    DrawingEncoder drawings_;
    std::vector<Bookmark> marks_;
    std::size_t rangesWithoutRoom_ = 0;
    bool started_ = false;    // written at least once
    std::uint16_t saves_ = 0; // after the first one, as far as the format counts
};

} // namespace qvnd::word
