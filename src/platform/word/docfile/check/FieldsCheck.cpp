#include "platform/word/docfile/check/Checks.h"
#include "platform/word/docfile/document/Remarks.h"
#include "platform/word/docfile/format/Plc.h"
#include "platform/word/docfile/format/SprmCodes.h"

#include <vector>

namespace qvnd::word {

namespace {

constexpr char16_t begin = 0x13;
constexpr char16_t separator = 0x14;
constexpr char16_t end = 0x15;

// The fields of one part: marks in the text, marks in the table, their balance.
class PartFields {
public:
    PartFields(const TextPartFacts& part, const Evidence& evidence, Findings& findings)
        : evidence_(evidence), findings_(findings), from_(evidence.partBegin(part.part)),
          length_(lengthOf(part.part, evidence.fib.ccp)),
          marks_(decodePlc(evidence.at(part.fields), 2)) {}

    void check() {
        checkTable();
        checkText();
        if (!open_.empty()) {
            findings_.add("field.balance", placeOf(evidence_, open_.back().at) + u"：域没有结束");
        }
    }

private:
    struct Open {
        Cp at;
        bool listed;
        bool separated;
    };

    // What the table names is a field character of that kind.
    void checkTable() {
        for (std::size_t i = 0; i < marks_.count(); ++i) {
            const unsigned kind = marks_.element(i)[0] & 0x1F;
            const Cp cp = marks_.positions[i];
            const bool there =
                cp < length_ && from_ + cp < evidence_.text.size() && charAt(cp) == kind;
            if (!there) {
                findings_.add("field.mark",
                              placeOf(evidence_, from_ + cp) + u"：域表所指之处不是域字符");
            }
        }
    }

    void checkText() {
        std::size_t next = 0;
        for (Cp cp = 0; cp < length_ && from_ + cp < evidence_.text.size(); ++cp) {
            const char16_t c = charAt(cp);
            if (c < begin || c > end || evidence_.characterFlag(from_ + cp, sprm::CFSpec) == 0) {
                continue;
            }
            while (next < marks_.count() && marks_.positions[next] < cp) {
                ++next;
            }
            const bool listed = next < marks_.count() && marks_.positions[next] == cp;
            balance(c, from_ + cp, listed);
        }
    }

    void balance(char16_t c, Cp at, bool listed) {
        if (c == begin) {
            open_.push_back({at, listed, false});
            return;
        }
        if (open_.empty() || (c == separator && open_.back().separated)) {
            findings_.add("field.balance", placeOf(evidence_, at) + u"：域字符没有相应的开始");
            return;
        }
        // Fields that mark a place (XE, TC, TA, RD) have no result and stand in no table.
        const bool marks = c == end && !open_.back().separated && !open_.back().listed;
        if (listed != open_.back().listed || (!listed && !marks)) {
            findings_.add("field.table", placeOf(evidence_, at) + u"：域字符不在域表中");
        }
        if (c == separator) {
            open_.back().separated = true;
        } else {
            open_.pop_back();
        }
    }

    char16_t charAt(Cp cp) const { return evidence_.text[from_ + cp]; }

    const Evidence& evidence_;
    Findings& findings_;
    Cp from_;
    Cp length_;
    Plc marks_;
    std::vector<Open> open_;
};

} // namespace

void checkFields(const Evidence& evidence, Findings& findings) {
    if (evidence.text.empty()) {
        return;
    }
    for (const TextPartFacts& part : textParts) {
        PartFields(part, evidence, findings).check();
    }
}

} // namespace qvnd::word
