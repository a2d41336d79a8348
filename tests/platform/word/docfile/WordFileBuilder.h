#pragma once

#include "platform/word/docfile/format/Fib.h"
#include "platform/word/docfile/formatting/CharacterPages.h"
#include "platform/word/docfile/text/PieceTable.h"

#include <map>
#include <string>
#include <vector>

namespace qvnd::test {

// A stretch of text of a WordFile. Its formatting counts in characters; in a compressed piece all
// lengths must be even.
struct PieceText {
    struct Characters {
        word::Cp length = 0;
        word::Bytes properties;
    };
    struct Paragraph {
        word::Cp length = 0;
        word::StyleIndex style = 0;
        word::Bytes properties;
    };

    std::u16string text;
    bool compressed = false;
    std::uint16_t modifier = 0;
    std::vector<Characters> characters; // none: all without properties
    std::vector<Paragraph> paragraphs;  // none: one, with style 0
};

// A small Word document put together part by part, for tests of the reader.
struct WordFile {
    struct Section {
        word::Cp length = 0;
        word::Bytes properties;
    };

    std::vector<PieceText> pieces;
    std::vector<std::size_t> storedOrder;       // of the pieces in the file; none: as they stand
    std::vector<word::Bytes> modifiers;         // that a piece's Prm1 names
    std::vector<Section> sections;              // none: the file has no table of sections
    word::Bytes data;                           // the Data stream
    word::PartLengths lengths;                  // no main text: all text is main text
    std::map<word::FibPair, word::Bytes> parts; // further structures of the table stream
    std::vector<std::u16string> storages;       // further storages, "ObjectPool/_1" and the like
};

// The file's streams, still apart.
struct WordStreams {
    word::Bytes wordDocument;
    word::Bytes table;
    word::Bytes data;
    word::Bytes protectedContent; // of a document under rights management
};
WordStreams wordStreams(const WordFile& file);

// A compound file of the streams; `storages` in paths of at most two names.
word::Bytes compoundFile(const WordStreams& streams,
                         const std::vector<std::u16string>& storages = {});
word::Bytes wordFile(const WordFile& file);

// A file of one uncompressed piece without formatting.
WordFile plainWordFile(std::u16string text);

} // namespace qvnd::test
