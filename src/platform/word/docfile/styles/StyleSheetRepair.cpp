#include "platform/word/docfile/styles/StyleSheetRepair.h"

#include <set>

namespace qvnd::word {

namespace {

class Repair {
public:
    Repair(StyleSheet& sheet, Remarks& remarks) : sheet_(sheet), remarks_(remarks) {}

    void run() {
        for (std::size_t istd = 0; istd < sheet_.styles.size(); ++istd) {
            if (sheet_.styles[istd]) {
                StyleDefinition& style = *sheet_.styles[istd];
                giveName(style, istd);
                checkBase(style, istd);
                checkOthers(style, istd);
            }
        }
    }

private:
    const StyleDefinition* at(StyleIndex istd) const {
        return istd < sheet_.styles.size() && sheet_.styles[istd] ? &*sheet_.styles[istd] : nullptr;
    }

    void giveName(StyleDefinition& style, std::size_t istd) {
        if (style.name.empty()) {
            style.name = u"样式 " + digits(std::int64_t(istd));
        }
        const std::u16string wanted = style.name;
        for (int number = 2; !names_.insert(style.name).second; ++number) {
            style.name = wanted + u" " + digits(number);
        }
    }

    // Whether the way from `istd` over its bases ends, and with styles of one kind.
    bool basesAreSound(std::size_t istd) const {
        std::set<StyleIndex> seen{static_cast<StyleIndex>(istd)};
        const StyleDefinition* style = at(static_cast<StyleIndex>(istd));
        while (style->basedOn != StyleDefinition::none) {
            const StyleDefinition* base = at(style->basedOn);
            if (base == nullptr || base->kind != style->kind ||
                !seen.insert(style->basedOn).second) {
                return false;
            }
            style = base;
        }
        return true;
    }

    void checkBase(StyleDefinition& style, std::size_t istd) {
        const StyleDefinition* base = at(style.basedOn);
        const bool own = base == nullptr || base->kind != style.kind;
        if (style.basedOn == StyleDefinition::none || (!own && basesAreSound(istd))) {
            return;
        }
        style.basedOn = StyleDefinition::none;
        remarks_.push_back(u"样式“" + style.name + u"”的基准样式不合规定，不再沿用");
    }

    void checkOthers(StyleDefinition& style, std::size_t istd) const {
        if (at(style.next) == nullptr) {
            style.next = static_cast<StyleIndex>(istd);
        }
        if (at(style.link) == nullptr) {
            style.link = 0;
        }
    }

    StyleSheet& sheet_;
    Remarks& remarks_;
    std::set<std::u16string> names_;
};

} // namespace

void repairStyleSheet(StyleSheet& sheet, Remarks& remarks) { Repair(sheet, remarks).run(); }

} // namespace qvnd::word
