#pragma once

#include "platform/word/docfile/WordFileBuilder.h"
#include "platform/word/docfile/document/DocumentTables.h"
#include "platform/word/docfile/format/Sprm.h"

#include <functional>
#include <set>
#include <string>
#include <vector>

namespace qvnd::test {

// A document with one of everything that the checker looks at: styles, a numbered paragraph, a
// table row of two cells, a field, a picture, a footnote, a bookmark, two sections, a header.
// Tests change a part of it before it is written, or its bytes afterwards.
class SoundDocument {
public:
    SoundDocument();

    // Where the text says so.
    word::Cp find(std::u16string_view text) const;
    PieceText& text() { return file.pieces[0]; }
    // Sets the properties of the paragraph, or of the characters, that begin at `text`.
    void setParagraph(std::u16string_view text, const word::Bytes& properties);
    void setCharacters(std::u16string_view text, word::Bytes properties);
    // Puts the text of one more part, which ends in a paragraph mark, behind all others.
    void append(std::u16string_view text);
    // Makes the character at `text` a special one.
    void mark(std::u16string_view text, char16_t character);

    WordStreams streams() const;
    word::Bytes bytes() const;

    WordFile file;
    word::PropertyLists lists;
    word::StyleSheet styles;
    std::vector<word::FontEntry> fonts;
    std::vector<word::ListDefinition> listDefinitions;
    std::vector<word::ListOverride> listOverrides;
    std::vector<std::u16string> authors;

private:
    void addText();
    void addTables();
};

// The rules that a file breaks.
std::set<std::string> brokenRules(const word::Bytes& file);
// What is told of one rule that it breaks.
std::vector<std::string> toldOf(const char* rule, const word::Bytes& file);
// The same of a sound document with another table.
std::set<std::string> brokenRulesWithTable(word::FibPair table, const word::Bytes& bytes);

// A property that is switched on; that of a special character, such as a picture's.
word::Bytes flag(word::SprmOpcode opcode);
word::Bytes special();

// A definition of a row of `columns` cells.
word::Bytes rowDefinition(unsigned columns);

// Changes 16 or 32 bits in place.
void put16(word::Bytes& bytes, std::size_t at, unsigned value);
void put32(word::Bytes& bytes, std::size_t at, std::uint32_t value);
std::uint32_t get32(const word::Bytes& bytes, std::size_t at);

// A file whose streams were changed after they were made; `change` gets them and their FIB.
word::Bytes changed(const SoundDocument& document,
                    const std::function<void(WordStreams&, const word::Fib&)>& change);

} // namespace qvnd::test
