#pragma once

#include "platform/word/docfile/document/DocumentData.h"
#include "platform/word/docfile/objects/ObjectPool.h"
#include "platform/word/docfile/styles/ListDefinitionEncoder.h"
#include "platform/word/docfile/text/HeaderStory.h"
#include "platform/word/docfile/writer/TableStream.h"
#include "platform/word/docfile/writer/WordStream.h"

#include <memory>
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

private:
    // The headers and footers behind the main text, as they are in the file.
    struct Headers {
        Bytes key; // text and properties, to tell whether they have changed
        Piece piece;
    };

    void writeText(const DocumentContent& content, const EncodedHeaders& headers,
                   FileProperties& properties);
    void writeTables(const DocumentContent& content);
    void writePositions(const DocumentContent& content, const EncodedHeaders& headers);
    void writeSections(const DocumentContent& content, FileProperties& properties);
    void writeFib(Cp mainLength, Cp headerLength);
    std::vector<Piece> pieces(const DocumentContent& content);

    CompoundStore store_;
    WordStream word_;
    DataStream data_;
    ObjectPool objects_;
    TableStream table_;
    FragmentPlaces places_;
    ListDefinitionEncoder listDefinitions_;
    Headers headers_;
    std::vector<Bookmark> marks_;
    bool started_ = false;    // written at least once
    std::uint16_t saves_ = 0; // after the first one, as far as the format counts
};

} // namespace qvnd::word
