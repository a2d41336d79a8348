#include "platform/word/docfile/check/Checks.h"
#include "platform/word/docfile/document/Remarks.h"
#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/docfile/format/SprmFacts.h"

#include <algorithm>

namespace qvnd::word {

namespace {

bool groupFits(SprmGroup group, ListPlace place) {
    switch (place) {
    case ListPlace::characters:
        return group == SprmGroup::character;
    case ListPlace::paragraph: // row ends carry the table's properties
        return group == SprmGroup::paragraph || group == SprmGroup::table;
    case ListPlace::tableStyle:
        return group == SprmGroup::table;
    case ListPlace::section:
        return group == SprmGroup::section;
    case ListPlace::piece:
        break;
    }
    return true;
}

std::uint32_t operandOf(const SprmView& entry) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < entry.operand.size() && i < 4; ++i) {
        value |= static_cast<std::uint32_t>(entry.operand[i]) << (8 * i);
    }
    return value;
}

// One property list held against the tables that it points to.
class ListCheck {
public:
    ListCheck(const std::u16string& where, const Evidence& evidence, Findings& findings)
        : where_(where), evidence_(evidence), findings_(findings) {}

    void check(const SprmView& entry) {
        const SprmFacts facts = factsOf(entry.opcode);
        switch (facts.target) {
        case SprmTarget::font:
            font(entry, facts);
            break;
        case SprmTarget::author:
            author(entry, facts);
            break;
        case SprmTarget::characterStyle:
            style(operandOf(entry), StyleKind::character);
            break;
        case SprmTarget::paragraphStyle:
            style(operandOf(entry), StyleKind::paragraph);
            break;
        case SprmTarget::tableStyle:
            style(operandOf(entry), StyleKind::table);
            break;
        case SprmTarget::list:
            list(operandOf(entry));
            break;
        default:
            break;
        }
        if (entry.opcode == sprm::PIpgp || entry.opcode == sprm::TIpgp) {
            division(operandOf(entry));
        }
        if (entry.opcode == sprm::PIlvl) {
            level(operandOf(entry));
        }
    }

private:
    void below(const char* rule, std::uint32_t index, std::size_t count, const char16_t* what) {
        if (index >= count) {
            findings_.add(rule, where_ + u"：" + what + u" " + digits(index) + u" 不存在");
        }
    }

    // Fonts of Word 6 numbering (ANLV) are looked at by no program.
    void font(const SprmView& entry, const SprmFacts& facts) {
        if (facts.targetAt == 0) {
            below("sprm.font", operandOf(entry) & 0xFFFF, evidence_.fonts, u"字体");
        }
    }

    // Behind the length and a flag: an author counts where the flag says that there is a change.
    void author(const SprmView& entry, const SprmFacts& facts) {
        const std::size_t at = facts.targetAt;
        const bool there = at == 0 || entry.operand[1] != 0;
        if (entry.operand.size() >= at + 2 && there) {
            below("sprm.author", entry.operand[at] | (entry.operand[at + 1] << 8),
                  evidence_.authors, u"修订者");
        }
    }

    void style(std::uint32_t istd, StyleKind kind) {
        constexpr std::uint32_t noStyle = 0x0FFF;
        const bool there = istd < evidence_.styles.size() && evidence_.styles[istd] == kind;
        if (!there && istd != noStyle) {
            findings_.add("sprm.style", where_ + u"：样式 " + digits(istd) + u" 不存在或种类不对");
        }
    }

    void list(std::uint32_t operand) {
        constexpr std::uint32_t oldNumbering = 0x7FF;   // numbered as Word 95 did
        constexpr std::uint32_t firstNegative = 0xF801; // keeps the list, shows no number
        const std::uint32_t ilfo = operand >= firstNegative ? 0x10000 - operand : operand;
        if (ilfo > evidence_.listOverrides && ilfo != oldNumbering) {
            findings_.add("sprm.list", where_ + u"：列表 " + digits(ilfo) + u" 不存在");
        }
    }

    // 0 is none.
    void division(std::uint32_t ipgp) {
        if (ipgp != 0 && evidence_.at(FibPair::PlcfPgp).empty()) {
            findings_.add("sprm.division", where_ + u"：网页分区 " + digits(ipgp) + u" 不存在");
        }
    }

    void level(std::uint32_t ilvl) {
        // Numbering as Word 95 had it goes on behind the nine levels.
        constexpr std::uint32_t lastOfOldNumbering = 12;
        if (ilvl > lastOfOldNumbering) {
            findings_.add("sprm.level", where_ + u"：列表级别 " + digits(ilvl) + u" 不存在");
        }
    }

    const std::u16string& where_;
    const Evidence& evidence_;
    Findings& findings_;
};

// The list within an entry, such as what a table style sets where a condition holds. Empty for an
// entry without one.
ByteView listInside(const SprmView& entry) {
    const SprmFacts facts = factsOf(entry.opcode);
    const bool holdsOne =
        facts.target == SprmTarget::listInside && entry.operand.size() > facts.targetAt;
    return holdsOne ? entry.operand.subspan(facts.targetAt) : ByteView{};
}

// Such lists do not nest.
void checkInside(const SprmView& outer, const std::u16string& where, const Evidence& evidence,
                 Findings& findings) {
    const ParsedSprms parsed = parseSprms(listInside(outer));
    if (!parsed.complete) {
        findings.add("sprm.parse", where + u"：属性中的属性表没有完整结束");
    }
    ListCheck check(where, evidence, findings);
    for (const SprmView& entry : parsed.sprms) {
        if (groupOf(entry.opcode) == groupOf(outer.opcode)) {
            check.check(entry);
        } else {
            findings.add("sprm.group",
                         where + u"：属性 " + hexadecimal(entry.opcode) + u" 不该在另一属性中");
        }
    }
}

} // namespace

void checkPropertyList(ByteView sprms, ListPlace place, const std::u16string& where,
                       const Evidence& evidence, Findings& findings) {
    const ParsedSprms parsed = parseSprms(sprms);
    if (!parsed.complete) {
        findings.add("sprm.parse", where + u"：属性表没有完整结束");
    }
    ListCheck check(where, evidence, findings);
    for (const SprmView& entry : parsed.sprms) {
        if (!groupFits(groupOf(entry.opcode), place)) {
            findings.add("sprm.group",
                         where + u"：属性 " + hexadecimal(entry.opcode) + u" 不该在此");
            continue;
        }
        check.check(entry);
        checkInside(entry, where, evidence, findings);
    }
}

} // namespace qvnd::word
