#pragma once

#include "platform/word/docfile/document/DocumentContent.h"
#include "platform/word/docfile/text/PieceTable.h"

#include <map>
#include <memory>
#include <unordered_map>
#include <vector>

namespace qvnd::word {

// A part of a fragment that the file does not have yet.
struct TextRange {
    std::shared_ptr<const Story> story;
    Cp begin = 0;
    Cp length = 0;
    // Where it starts in the document; the range continues the one before in the list when that
    // one ends there.
    Cp position = 0;
};

// Remembers where in the WordDocument stream the text of which fragment lies. Fragments are known
// by identity and kept alive, so that no other can take their address.
class FragmentPlaces {
public:
    // The parts of the slices that have not been written yet, in reading order, each once.
    std::vector<TextRange> missing(const std::vector<StorySlice>& slices) const;
    // The range has been written at `fc`.
    void add(const TextRange& range, std::uint32_t fc);
    // The slices as pieces; those that follow each other in the file are joined. All of them must
    // have been written.
    const std::vector<Piece>& pieces(const std::vector<StorySlice>& slices);

private:
    // A slice of the last pieces() call, with the sums over it and the slices before it.
    struct Answered {
        const Story* fragment = nullptr;
        Cp begin = 0;
        Cp length = 0;
        Cp end = 0;             // in the document
        std::size_t pieces = 0; // joined
        Cp lastLength = 0;      // of the last of those pieces
    };
    struct Place {
        Cp length = 0;
        std::uint32_t fc = 0;
    };
    using Places = std::map<Cp, Place>; // by where they begin in the fragment; disjoint
    struct Fragment {
        std::shared_ptr<const Story> story;
        Places places;
    };

    // How many of the first slices are the same as in the last pieces() call.
    std::size_t answeredBefore(const std::vector<StorySlice>& slices) const;
    void takeBack(std::size_t answered);
    void answer(const StorySlice& slice);
    void add(const Piece& piece);
    static void addMissing(std::vector<TextRange>& ranges, Places& places, const StorySlice& slice,
                           Cp position);

    std::unordered_map<const Story*, Fragment> fragments_;
    // Kept from the last pieces() call: between two saves a document mostly grows near its end.
    std::vector<Answered> answered_;
    std::vector<Piece> pieces_; // of those
};

} // namespace qvnd::word
