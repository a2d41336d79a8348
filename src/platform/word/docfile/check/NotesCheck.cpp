#include "platform/word/docfile/check/Checks.h"
#include "platform/word/docfile/document/Remarks.h"
#include "platform/word/docfile/format/Plc.h"

namespace qvnd::word {

namespace {

constexpr std::size_t frdSize = 2; // of a footnote or endnote: nAuto

// A note that numbers itself is marked in the text; one with a mark of the user's own is not.
void checkMarks(const TextPartFacts& notes, const Plc& references, const Evidence& evidence,
                Findings& findings) {
    for (std::size_t i = 0; i < references.count(); ++i) {
        const Cp cp = references.positions[i];
        const ByteView element = references.element(i);
        const bool automatic = element.size() != frdSize || element[0] != 0 || element[1] != 0;
        const bool there = cp < evidence.text.size() && evidence.text[cp] == notes.anchor;
        if (automatic && !there) {
            findings.add("note.mark", placeOf(evidence, cp) + u"应为" + notes.name + u"的引用标记");
        }
    }
}

} // namespace

void checkNotes(const Evidence& evidence, Findings& findings) {
    for (const TextPartFacts& facts : textParts) {
        if (!hasNotes(facts)) {
            continue;
        }
        const Plc references =
            decodePlc(evidence.at(facts.references->pair), facts.references->elementSize);
        const Plc texts = decodePlc(evidence.at(facts.texts->pair), 0);
        // Texts: one position each, one behind the last, one that closes the table.
        const std::size_t expected = references.count() == 0 ? 0 : references.count() + 1;
        if (texts.count() != expected) {
            findings.add("note.count", std::u16string(facts.name) + u"的引用与文字个数不同");
        }
        if (!evidence.text.empty()) {
            checkMarks(facts, references, evidence, findings);
        }
    }
}

} // namespace qvnd::word
