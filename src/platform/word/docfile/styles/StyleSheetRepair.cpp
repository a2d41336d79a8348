#include "platform/word/docfile/styles/StyleSheetRepair.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace qvnd::word {

namespace {

// Word itself stops far earlier. What comes to know a style walks over its bases.
constexpr std::size_t deepestBase = 64;
constexpr StyleIndex standard = 0; // the style that all others of paragraphs stand on

class Repair {
public:
    Repair(StyleSheet& sheet, Remarks& remarks)
        : sheet_(sheet), remarks_(remarks), depths_(sheet.styles.size()) {}

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
        const auto [last, isNew] = names_.try_emplace(style.name, 1);
        if (isNew) {
            return;
        }
        // Of many equal names each search begins behind the one before.
        const std::u16string wanted = style.name;
        int& number = last->second;
        do {
            style.name = wanted + u" " + digits(++number);
        } while (!names_.try_emplace(style.name, 1).second);
    }

    // Whether the way from `istd` over its bases ends in time, and with styles of one kind. What
    // is known of a base is not looked at again.
    bool basesAreSound(std::size_t istd) {
        std::vector<std::size_t> way;
        std::size_t at = istd;
        while (depths_[at] == 0) {
            way.push_back(at);
            const StyleDefinition& style = *sheet_.styles[at];
            if (style.basedOn == StyleDefinition::none) {
                depths_[at] = 1;
                way.pop_back();
                break;
            }
            const StyleDefinition* base = this->at(style.basedOn);
            if (base == nullptr || base->kind != style.kind || way.size() > deepestBase) {
                return false;
            }
            at = style.basedOn;
        }
        if (depths_[at] + way.size() > deepestBase) {
            return false;
        }
        for (std::size_t depth = depths_[at]; !way.empty(); way.pop_back()) {
            depths_[way.back()] = ++depth;
        }
        return true;
    }

    // Word processors base such a style on the standard one.
    static bool isBasedOnCharacters(const StyleDefinition& style, const StyleDefinition* base) {
        return style.kind == StyleKind::paragraph && base != nullptr &&
               base->kind == StyleKind::character;
    }

    void checkBase(StyleDefinition& style, std::size_t istd) {
        const StyleDefinition* base = at(style.basedOn);
        const bool own = base == nullptr || base->kind != style.kind;
        if (style.basedOn == StyleDefinition::none || (!own && basesAreSound(istd))) {
            return;
        }
        style.basedOn = isBasedOnCharacters(style, base) ? standard : StyleDefinition::none;
        if (style.basedOn == StyleDefinition::none || !basesAreSound(istd)) {
            style.basedOn = StyleDefinition::none;
            depths_[istd] = 1;
        }
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
    std::unordered_map<std::u16string, int> names_; // with the last number given behind it
    std::vector<std::size_t> depths_; // styles from there to the root; 0 while unknown
};

} // namespace

void repairStyleSheet(StyleSheet& sheet, Remarks& remarks) { Repair(sheet, remarks).run(); }

} // namespace qvnd::word
