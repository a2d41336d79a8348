#pragma once

#include "platform/word/docfile/container/CompoundStore.h"
#include "platform/word/docfile/formatting/FormattingPage.h"
#include "platform/word/docfile/writer/FileProperties.h"
#include "platform/word/docfile/writer/FragmentPlaces.h"
#include "platform/word/docfile/writer/OverlongRuns.h"
#include "platform/word/docfile/writer/RangeFormatting.h"

#include <array>
#include <map>
#include <optional>
#include <unordered_map>

namespace qvnd::word {

// The WordDocument stream of a document that is saved again and again: the FIB at its start, and
// behind it for every save what is new: text, the pages of its formatting, section properties.
class WordStream {
public:
    // Room for the FIB; the text starts behind it.
    static constexpr std::uint32_t fibRoom = 2048;

    // Starts the stream; `store` outlives the object.
    explicit WordStream(CompoundStore& store);

    // Appends the text of the ranges and its formatting; an entry of the answer is where the text
    // of that range starts. `sectionEnds`: positions of the document behind the break of each
    // section, ascending.
    std::vector<std::uint32_t> append(const std::vector<TextRange>& ranges,
                                      const std::vector<Cp>& sectionEnds,
                                      FileProperties& properties, DataStream& data);
    // Where the section properties lie: one place for each list, by contents.
    std::uint32_t placeOfSection(ByteView properties);
    // The offset of the picture (OfficeArtBlip) in an entry of DocumentTables::shapePictures. It is
    // appended unless it or an equal one is there already.
    std::uint32_t placeOfPicture(const DataBlob& entry);
    // Writes the FIB, which must fit its room, as far as it has changed.
    void putFib(const Bytes& fib);
    // Fills the last sector, and the stream to the size from which on it may be changed by parts.
    // Call before putFib().
    void finish();

    std::uint32_t size() const { return store_.size(stream_); }
    // Behind the last text.
    std::uint32_t textLimit() const { return characterPages_.limitFc(); }
    const BinTableEncoder& characterPages() const { return characterPages_; }
    const BinTableEncoder& paragraphPages() const { return paragraphPages_; }
    const OverlongRuns& overlongRuns() const { return overlong_; }

private:
    std::vector<std::uint32_t> appendText(const std::vector<TextRange>& ranges,
                                          const std::vector<bool>& leftOpen);
    void fillSector();
    // The pages of text from `fc` on, `gap` characters of no meaning in front.
    void appendCharacterPages(const RangeFormatting& formatting, std::uint32_t fc, Cp gap);
    void appendParagraphPages(const RangeFormatting& formatting, std::uint32_t fc, Cp gap,
                              DataStream& data);
    // A list that is too long for a page: what of it the page holds, and the modifier for the rest.
    struct DividedList {
        Bytes list;
        std::optional<std::uint16_t> modifier;
    };
    DividedList dividedList(ByteView properties);
    void take(const FormattingPage& page, BinTableEncoder& table);
    void flushPages();

    CompoundStore& store_;
    CompoundStore::Stream stream_;
    BinTableEncoder characterPages_;
    BinTableEncoder paragraphPages_;
    Bytes pages_; // that have their place and are not written yet
    OverlongRuns overlong_;
    std::map<Bytes, std::uint32_t> sections_;
    std::map<std::array<std::uint8_t, 16>, std::uint32_t> pictures_; // by digest
    std::map<DataBlob, std::uint32_t> pictureEntries_;               // the same by identity
    Bytes fib_; // as in the file, whole sectors
};

} // namespace qvnd::word
