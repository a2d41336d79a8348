#include "platform/word/layout/CharacterClasses.h"

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

namespace qvnd::layout {

namespace {

namespace classes {

constexpr unsigned ideograph = 0x001;
constexpr unsigned eastAsian = 0x002;
constexpr unsigned eitherScript = 0x004;
constexpr unsigned fullWidth = 0x008;
constexpr unsigned startsNone = 0x010;
constexpr unsigned endsNone = 0x020;
constexpr unsigned hangs = 0x040;
constexpr unsigned hangsInOffice = 0x080;
constexpr unsigned closes = 0x100;
constexpr unsigned opens = 0x200;
constexpr unsigned squeezable = 0x400;
constexpr unsigned bracket = 0x800;

constexpr unsigned letters = ideograph | eastAsian;
constexpr unsigned signs = eitherScript | fullWidth;

} // namespace classes

struct ListedClass {
    unsigned classes;
    std::u32string_view characters;
};

struct RangeClass {
    unsigned classes;
    char32_t first;
    char32_t last;
};

constexpr std::array listedClasses{
    ListedClass{
        classes::startsNone,
        U"!%),.:;>?]}"
        U"¢¨°·ˇˉ―‖’”…‰′″›℃∶、。〃〉》」』】〕〗〞︶︺︾﹀﹄﹚﹜﹞！＂％＇），．：；？］｀｜｝～￠"},
    ListedClass{classes::endsNone, U"$([{£¥·‘“〈《「『【〔〖〝﹗﹙﹛＄（．［｛￡￥"},
    ListedClass{classes::hangs, U"、。，．"},
    ListedClass{classes::hangsInOffice, U"、。，．！？：；,."},
    ListedClass{classes::signs,
                U"¤§¨°±·×÷ˇˉ‐–—―‖‘’“”…‰′″※℃№℡←↑→↓↖↗↘↙∈∏∑√∝∞∟∠∥∧∨∩∪∫∮∴∵∶∷∽≈≌≠≡≤≥⊕⊥■□▲△▼▽◆◇○◎●★☆♀♂"},
    ListedClass{classes::fullWidth, U"Ёё≮≯⊙⌒∣"},
    ListedClass{classes::closes, U"、。〉》」』】〕〗），．：；］｝’”"},
    ListedClass{classes::opens, U"〈《「『【〔〖（［｛‘“"},
    ListedClass{classes::bracket, U"〈〉《》「」『』【】〔〕〖〗（）［］｛｝"},
    ListedClass{classes::squeezable, U"、。〈〉《》「」『』【】〔〕〖〗〘〙〚〛〝〞〟"},
};

constexpr std::array rangeClasses{
    RangeClass{classes::letters, 0x2E80, 0x2FDF},   RangeClass{classes::letters, 0x3005, 0x3007},
    RangeClass{classes::letters, 0x3021, 0x3029},   RangeClass{classes::letters, 0x3041, 0x318F},
    RangeClass{classes::letters, 0x31A0, 0x31BF},   RangeClass{classes::letters, 0x31F0, 0x31FF},
    RangeClass{classes::letters, 0x3400, 0x4DBF},   RangeClass{classes::letters, 0x4E00, 0x9FFF},
    RangeClass{classes::letters, 0xAC00, 0xD7A3},   RangeClass{classes::letters, 0xF900, 0xFAFF},
    RangeClass{classes::eastAsian, 0x3000, 0x303F}, RangeClass{classes::eastAsian, 0x3190, 0x33FF},
    RangeClass{classes::eastAsian, 0xFE30, 0xFE6F}, RangeClass{classes::eastAsian, 0xFF00, 0xFFEF},
    RangeClass{classes::eastAsian, 0x2460, 0x24FF}, RangeClass{classes::eastAsian, 0x2550, 0x2573},
    RangeClass{classes::eastAsian, 0x2581, 0x2595}, RangeClass{classes::signs, 0x2160, 0x217F},
    RangeClass{classes::fullWidth, 0x391, 0x3A9},   RangeClass{classes::fullWidth, 0x3B1, 0x3C9},
    RangeClass{classes::fullWidth, 0x410, 0x44F},   RangeClass{classes::fullWidth, 0x2500, 0x254F},
};

bool within(char32_t c, char32_t first, char32_t last) { return c >= first && c <= last; }

// The classes of the characters that one code unit holds. Lines ask for them several times for
// each character, which is too often to search the lists.
class ClassTable {
public:
    ClassTable() : classes_(0x10000) {
        for (const ListedClass& list : listedClasses) {
            for (const char32_t c : list.characters) {
                add(c, list.classes);
            }
        }
        for (const RangeClass& range : rangeClasses) {
            for (char32_t c = range.first; c <= range.last; ++c) {
                add(c, range.classes);
            }
        }
    }

    unsigned of(char32_t c) const {
        const unsigned behind = within(c, 0x20000, 0x3FFFD) ? classes::letters : 0;
        return c < classes_.size() ? classes_[c] : behind;
    }

private:
    void add(char32_t c, unsigned more) {
        classes_[c] = static_cast<std::uint16_t>(classes_[c] | more);
    }

    std::vector<std::uint16_t> classes_;
};

bool isOf(char32_t c, unsigned wanted) {
    static const ClassTable table;
    return (table.of(c) & wanted) != 0;
}

} // namespace

bool isIdeograph(char32_t c) { return isOf(c, classes::ideograph); }
bool isEastAsian(char32_t c) { return isOf(c, classes::eastAsian); }
bool isOfEitherScript(char32_t c) { return isOf(c, classes::eitherScript); }
bool isFullWidthInChineseFonts(char32_t c) { return isOf(c, classes::fullWidth); }

bool isLatinLetter(char32_t c) {
    return within(c, U'a', U'z') || within(c, U'A', U'Z') || within(c, 0xC0, 0x24F) ||
           within(c, 0x370, 0x52F);
}

bool isDigit(char32_t c) { return within(c, U'0', U'9'); }

bool isBlank(char32_t c) { return c == U' ' || c == 0x2002 || c == 0x2003 || c == 0x2009; }

bool beginsNoLine(char32_t c) { return isOf(c, classes::startsNone); }
bool endsNoLine(char32_t c) { return isOf(c, classes::endsNone); }
bool mayHang(char32_t c) { return isOf(c, classes::hangs); }
bool mayHangInOffice(char32_t c) { return isOf(c, classes::hangsInOffice); }

bool isClosingMark(char32_t c) { return isOf(c, classes::closes); }
bool isOpeningMark(char32_t c) { return isOf(c, classes::opens); }
bool isBracket(char32_t c) { return isOf(c, classes::bracket); }
bool isSqueezable(char32_t c) { return isOf(c, classes::squeezable); }

bool mayBreakBetween(char32_t before, char32_t after, const BreakRules& rules) {
    constexpr char32_t noBreakSpace = 0xA0;
    if (before == noBreakSpace || after == noBreakSpace || isBlank(after)) {
        return false;
    }
    if (isBlank(before)) {
        return true;
    }
    const bool isForbidden = rules.forbidsLineEnds && (beginsNoLine(after) || endsNoLine(before));
    const bool eastAsian = isEastAsian(before) || isEastAsian(after);
    const bool behindHyphen =
        (before == U'-' || before == U'–' || before == U'—') && after != before;
    return !isForbidden && (eastAsian || behindHyphen || rules.breaksWords);
}

} // namespace qvnd::layout
