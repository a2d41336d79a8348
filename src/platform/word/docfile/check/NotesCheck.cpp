#include "platform/word/docfile/check/Checks.h"
#include "platform/word/docfile/document/Remarks.h"
#include "platform/word/docfile/format/Plc.h"
#include "platform/word/docfile/format/SprmCodes.h"

#include <array>

namespace qvnd::word {

namespace {

struct NoteTables {
    FibPair references;
    std::size_t referenceSize;
    FibPair texts;
    Part part;
    char16_t mark;
    const char16_t* name;
};
constexpr std::array<NoteTables, 3> tables{
    {{FibPair::PlcffndRef, 2, FibPair::PlcffndTxt, Part::footnotes, 0x02, u"脚注"},
     {FibPair::PlcfendRef, 2, FibPair::PlcfendTxt, Part::endnotes, 0x02, u"尾注"},
     {FibPair::PlcfandRef, 30, FibPair::PlcfandTxt, Part::comments, 0x05, u"批注"}}};

// A note that numbers itself is marked in the text; one with a mark of the user's own is not.
void checkMarks(const NoteTables& notes, const Plc& references, const Evidence& evidence,
                Findings& findings) {
    for (std::size_t i = 0; i < references.count(); ++i) {
        const Cp cp = references.positions[i];
        const bool automatic = notes.part == Part::comments || references.element(i)[0] != 0 ||
                               references.element(i)[1] != 0;
        const bool there = cp < evidence.text.size() && evidence.text[cp] == notes.mark;
        if (automatic && !there) {
            findings.add("note.mark", placeOf(evidence, cp) + u"应为" + notes.name + u"的引用标记");
        }
    }
}

} // namespace

void checkNotes(const Evidence& evidence, Findings& findings) {
    for (const NoteTables& notes : tables) {
        const Plc references = decodePlc(evidence.at(notes.references), notes.referenceSize);
        const Plc texts = decodePlc(evidence.at(notes.texts), 0);
        // Texts: one position each, one behind the last, one that closes the table.
        const std::size_t expected = references.count() == 0 ? 0 : references.count() + 1;
        if (texts.count() != expected) {
            findings.add("note.count", std::u16string(notes.name) + u"的引用与文字个数不同");
        }
        if (!evidence.text.empty()) {
            checkMarks(notes, references, evidence, findings);
        }
    }
}

} // namespace qvnd::word
