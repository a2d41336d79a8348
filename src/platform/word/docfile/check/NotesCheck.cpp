#include "platform/word/docfile/check/Checks.h"
#include "platform/word/docfile/document/Remarks.h"
#include "platform/word/docfile/format/Plc.h"
#include "platform/word/docfile/format/SpecialCharacters.h"
#include "platform/word/docfile/format/SprmCodes.h"

#include <algorithm>
#include <string>
#include <unordered_set>

namespace qvnd::word {

namespace {

constexpr std::size_t frdSize = 2; // of a footnote or endnote: nAuto

// The notes of one kind, or the comments: where they are referred to, and their texts.
class NotesOfPart {
public:
    NotesOfPart(const TextPartFacts& notes, const Evidence& evidence, Findings& findings)
        : notes_(notes), evidence_(evidence), findings_(findings),
          references_(
              decodePlc(evidence.at(notes.references->pair), notes.references->elementSize)),
          texts_(decodePlc(evidence.at(notes.texts->pair), 0)) {}

    const Plc& references() const { return references_; }

    void check() {
        checkTables();
        checkOrder();
        if (!evidence_.text.empty()) {
            checkMarks();
            checkTexts();
        }
    }

private:
    void broken(const char* rule, std::u16string_view what) {
        findings_.add(rule, notes_.name + std::u16string(what));
    }

    // Texts: one position each, one behind the last, one that closes the table. The mark that
    // closes the part belongs to no text.
    void checkTables() {
        const Cp length = lengthOf(notes_.part, evidence_.fib.ccp);
        if ((length != 0) != (references_.count() != 0)) {
            broken("note.table", length != 0 ? u"有文字，却没有引用" : u"有引用，却没有文字");
        }
        const std::size_t expected = references_.count() == 0 ? 0 : references_.count() + 1;
        if (texts_.count() != expected) {
            broken("note.count", u"的引用与文字个数不同");
        } else if (expected != 0 && length != 0 && texts_.positions[expected - 1] + 1 != length) {
            broken("note.end", u"的文字没有到其部分的末尾");
        }
    }

    void checkOrder() {
        for (std::size_t i = 1; i < references_.count(); ++i) {
            if (references_.positions[i] == references_.positions[i - 1]) {
                broken("note.order", u"第 " + digits(std::int64_t(i)) + u" 个和下一个在同一处引用");
            }
        }
    }

    // A note that numbers itself is marked in the text; one with a mark of the user's own is not.
    void checkMarks() {
        for (std::size_t i = 0; i < references_.count(); ++i) {
            const Cp cp = references_.positions[i];
            const ByteView element = references_.element(i);
            const bool automatic = element.size() != frdSize || element[0] != 0 || element[1] != 0;
            const bool there = cp < evidence_.text.size() && evidence_.text[cp] == notes_.anchor;
            if (automatic && !there) {
                findings_.add("note.mark",
                              placeOf(evidence_, cp) + u"应为" + notes_.name + u"的引用标记");
            }
        }
    }

    void checkTexts() {
        const std::size_t from = evidence_.partBegin(notes_.part);
        for (std::size_t i = 0; i + 1 < texts_.count(); ++i) {
            const Cp begin = texts_.positions[i];
            const Cp end = texts_.positions[i + 1];
            const std::size_t last = from + end - 1;
            if (end <= begin || last >= evidence_.text.size() ||
                evidence_.text[last] != special::paragraphMark) {
                broken("note.text", u"第 " + digits(std::int64_t(i) + 1) +
                                        u" 条没有文字，或者没有以段落标记结束");
            }
        }
    }

    const TextPartFacts& notes_;
    const Evidence& evidence_;
    Findings& findings_;
    Plc references_;
    Plc texts_;
};

// A mark in the main text that shows the number of a note, or a comment, belongs to one.
void checkStrayMarks(const std::unordered_set<Cp>& referred, const Evidence& evidence,
                     Findings& findings) {
    const std::size_t end = std::min<std::size_t>(evidence.fib.ccp.text, evidence.text.size());
    for (Cp cp = 0; cp < end; ++cp) {
        const char16_t c = evidence.text[cp];
        if ((c == special::noteReference || c == special::commentReference) &&
            !referred.contains(cp) && evidence.characterFlag(cp, sprm::CFSpec) == 1) {
            findings.add("note.stray", placeOf(evidence, cp) + u"是引用标记，却没有所引用的文字");
        }
    }
}

} // namespace

void checkNotes(const Evidence& evidence, Findings& findings) {
    std::unordered_set<Cp> referred;
    for (const TextPartFacts& facts : textParts) {
        if (!hasNotes(facts)) {
            continue;
        }
        NotesOfPart notes(facts, evidence, findings);
        notes.check();
        for (std::size_t i = 0; i < notes.references().count(); ++i) {
            referred.insert(notes.references().positions[i]);
        }
    }
    checkStrayMarks(referred, evidence, findings);
}

} // namespace qvnd::word
