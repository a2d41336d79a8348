#include "platform/word/docfile/styles/StyleSheetRepair.h"

#include "platform/word/docfile/format/FixedStyles.h"

#include <algorithm>
#include <string>
#include <unordered_map>
#include <unordered_set>
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
        forEachStyle([this](StyleDefinition& style, std::size_t istd) {
            giveName(style, istd);
            checkOwnBase(style, istd);
            checkOthers(style, istd);
        });
        forEachStyle([this](StyleDefinition& style, std::size_t) {
            style.aliases = aliasesThat(style.aliases, [this](const std::u16string& alias) {
                return names_.try_emplace(alias, 1).second;
            });
        });
        // Only now each base is one, so that no style suffers for what is wrong with its base's.
        forEachStyle([this](StyleDefinition& style, std::size_t istd) { checkWay(style, istd); });
    }

private:
    template <typename Check>
    void forEachStyle(const Check& check) {
        for (std::size_t istd = 0; istd < sheet_.styles.size(); ++istd) {
            if (sheet_.styles[istd]) {
                check(*sheet_.styles[istd], istd);
            }
        }
    }

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

    // Whether the way from `istd` over its bases ends in time. What is known of a base is not
    // looked at again.
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
            if (way.size() > deepestBase) {
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

    bool canBeBase(StyleIndex base, const StyleDefinition& style) const {
        const StyleDefinition* found = at(base);
        return found != nullptr && found != &style && found->kind == style.kind;
    }

    // A style of paragraphs that names one of characters: word processors base it on the standard.
    bool isBasedOnCharacters(const StyleDefinition& style) const {
        const StyleDefinition* base = at(style.basedOn);
        return style.kind == StyleKind::paragraph && base != nullptr &&
               base->kind == StyleKind::character;
    }

    void checkOwnBase(StyleDefinition& style, std::size_t istd) {
        if (style.basedOn == StyleDefinition::none || canBeBase(style.basedOn, style)) {
            return;
        }
        const bool hasStandard = isBasedOnCharacters(style) && canBeBase(standard, style);
        style.namesCharacterBase = hasStandard;
        giveUpBase(style, istd, hasStandard ? standard : StyleDefinition::none);
    }

    void checkWay(StyleDefinition& style, std::size_t istd) {
        if (!basesAreSound(istd)) {
            giveUpBase(style, istd, StyleDefinition::none);
            depths_[istd] = 1;
        }
    }

    void giveUpBase(StyleDefinition& style, std::size_t istd, StyleIndex instead) {
        style.basedOn = instead;
        if (told_.insert(istd).second) {
            remarks_.push_back(u"样式“" + style.name + u"”的基准样式不合规定，不再沿用");
        }
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
    std::vector<std::size_t> depths_;      // styles from there to the root; 0 while unknown
    std::unordered_set<std::size_t> told_; // whose bases have been given up
};

} // namespace

std::u16string aliasesThat(std::u16string_view aliases,
                           const std::function<bool(const std::u16string&)>& isFree) {
    std::u16string kept;
    for (std::size_t begin = 0; begin < aliases.size();) {
        const std::size_t end = std::min(aliases.find(u',', begin), aliases.size());
        const std::u16string alias(aliases.substr(begin, end - begin));
        if (!alias.empty() && isFree(alias)) {
            kept += (kept.empty() ? u"" : u",") + alias;
        }
        begin = end + 1;
    }
    return kept;
}

void repairStyleNumbers(StyleSheet& sheet) {
    std::unordered_set<std::uint16_t> taken(fixedStyles.begin(), fixedStyles.end());
    for (std::size_t istd = 0; istd < sheet.styles.size(); ++istd) {
        if (!sheet.styles[istd]) {
            continue;
        }
        std::uint16_t& number = sheet.styles[istd]->sti;
        if (istd < fixedStyles.size()) {
            number = fixedStyles[istd];
        } else if (number != StyleDefinition::userDefined && !taken.insert(number).second) {
            number = StyleDefinition::userDefined;
        }
    }
}

void repairStyleSheet(StyleSheet& sheet, Remarks& remarks) { Repair(sheet, remarks).run(); }

} // namespace qvnd::word
