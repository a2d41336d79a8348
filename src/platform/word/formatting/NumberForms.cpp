#include "platform/word/formatting/NumberForms.h"

#include "platform/word/docfile/document/Remarks.h"
#include "platform/word/formatting/NameFolding.h"
#include "platform/word/formatting/NumberWords.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace qvnd::word {

namespace {

std::u16string roman(int number, bool capitals) {
    constexpr std::array<std::pair<int, std::u16string_view>, 13> steps{{{1000, u"m"},
                                                                         {900, u"cm"},
                                                                         {500, u"d"},
                                                                         {400, u"cd"},
                                                                         {100, u"c"},
                                                                         {90, u"xc"},
                                                                         {50, u"l"},
                                                                         {40, u"xl"},
                                                                         {10, u"x"},
                                                                         {9, u"ix"},
                                                                         {5, u"v"},
                                                                         {4, u"iv"},
                                                                         {1, u"i"}}};
    constexpr int highest = 32767;
    std::u16string text;
    int rest = number <= highest ? number : 0;
    for (const auto& [value, letters] : steps) {
        for (; rest >= value; rest -= value) {
            text += letters;
        }
    }
    for (char16_t& c : text) {
        c = static_cast<char16_t>(capitals ? c - u'a' + u'A' : c);
    }
    return text;
}

// a to z, then aa to zz, and so on.
std::u16string letters(int number, char16_t first) {
    constexpr int count = 26;
    constexpr int longest = 30;
    if (number < 1) {
        return {};
    }
    const int times = std::min((number - 1) / count + 1, longest);
    return std::u16string(static_cast<std::size_t>(times),
                          static_cast<char16_t>(first + (number - 1) % count));
}

std::u16string digitForDigit(int number, std::u16string_view forms) {
    std::u16string text = digits(number);
    for (char16_t& c : text) {
        c = c >= u'0' && c <= u'9' ? forms[static_cast<std::size_t>(c - u'0')] : c;
    }
    return text;
}

std::u16string chinese(int number, std::u16string_view forms, std::u16string_view units) {
    constexpr int highest = 9999;
    if (number <= 0 || number > highest) {
        return number == 0 ? std::u16string(forms.substr(0, 1)) : digits(number);
    }
    std::u16string text;
    bool gap = false;
    std::size_t unit = 3;
    for (const int value : {1000, 100, 10, 1}) {
        const auto digit = static_cast<std::size_t>(number / value % 10);
        if (digit == 0) {
            gap = gap || !text.empty();
        } else {
            text += gap ? forms.substr(0, 1) : std::u16string_view();
            gap = false;
            text += forms[digit];
            text += unit > 0 ? units.substr(unit - 1, 1) : std::u16string_view();
        }
        --unit;
    }
    return text;
}

// 十 to 十九 go without their one.
std::u16string counting(int number) {
    const std::u16string text = chinese(number, u"零一二三四五六七八九", u"十百千");
    return number >= 10 && number < 20 ? text.substr(1) : text;
}

std::u16string enclosed(int number, char16_t first, int count) {
    return number >= 1 && number <= count
               ? std::u16string(1, static_cast<char16_t>(first + number - 1))
               : digits(number);
}

std::u16string ofCycle(int number, std::u16string_view cycle) {
    return number >= 1 && number <= static_cast<int>(cycle.size())
               ? std::u16string(cycle.substr(static_cast<std::size_t>(number) - 1, 1))
               : digits(number);
}

// 甲子, 乙丑 and so on to 癸亥.
std::u16string ofStemsAndBranches(int number) {
    constexpr int count = 60;
    constexpr std::u16string_view stems = u"甲乙丙丁戊己庚辛壬癸";
    constexpr std::u16string_view branches = u"子丑寅卯辰巳午未申酉戌亥";
    if (number < 1 || number > count) {
        return digits(number);
    }
    const auto place = static_cast<std::size_t>(number) - 1;
    return {stems[place % stems.size()], branches[place % branches.size()]};
}

std::u16string hexadecimal(int number) {
    constexpr std::u16string_view forms = u"0123456789ABCDEF";
    if (number < 0) {
        return digits(number);
    }
    std::u16string text;
    for (auto rest = static_cast<unsigned>(number); rest > 0 || text.empty(); rest /= 16) {
        text.insert(text.begin(), forms[rest % 16]);
    }
    return text;
}

// *, †, ‡, §, then two of each, and so on.
std::u16string marks(int number) {
    constexpr std::u16string_view forms = u"*†‡§";
    constexpr std::size_t longest = 30;
    if (number < 1) {
        return digits(number);
    }
    const auto place = static_cast<std::size_t>(number) - 1;
    const std::size_t times = std::min(place / forms.size() + 1, longest);
    return std::u16string(times, forms[place % forms.size()]);
}

std::u16string ordinal(int number) {
    const int last = number % 10;
    const bool isTeen = number / 10 % 10 == 1;
    const char16_t* ending = isTeen || last == 0 || last > 3 ? u"th"
                             : last == 1                     ? u"st"
                             : last == 2                     ? u"nd"
                                                             : u"rd";
    return digits(number) + ending;
}

std::u16string twoDigits(int number) {
    return number >= 0 && number < 10 ? u"0" + digits(number) : digits(number);
}

// - 3 -, as page numbers are dressed.
std::u16string betweenDashes(int number) { return u"- " + digits(number) + u" -"; }

struct FormName {
    std::u16string_view name; // in lower case
    unsigned form = 0;
};

constexpr unsigned cardinalText = 6;
constexpr unsigned ordinalText = 7;

constexpr std::array<FormName, 22> formNames{{{u"arabic", 0},
                                              {u"roman", 2},
                                              {u"alphabetic", 4},
                                              {u"ordinal", 5},
                                              {u"cardtext", cardinalText},
                                              {u"ordtext", ordinalText},
                                              {u"hex", 8},
                                              {u"dbnum1", 10},
                                              {u"dbnum2", 11},
                                              {u"dbchar", 14},
                                              {u"dbnum3", 16},
                                              {u"circlenum", 18},
                                              {u"gb1", 26},
                                              {u"gb2", 27},
                                              {u"gb3", 28},
                                              {u"gb4", 29},
                                              {u"zodiac1", 30},
                                              {u"zodiac2", 31},
                                              {u"chinesenum1", 37},
                                              {u"chinesenum2", 38},
                                              {u"chinesenum3", 39},
                                              {u"arabicdash", 57}}};

// Roman numbers and letters have the case of the name.
std::optional<unsigned> formNamed(std::u16string_view name) {
    constexpr unsigned smallRoman = 2;
    constexpr unsigned smallLetters = 4;
    const auto* found = std::find_if(
        formNames.begin(), formNames.end(),
        [folded = foldedName(name)](const FormName& known) { return known.name == folded; });
    if (found == formNames.end()) {
        return std::nullopt;
    }
    const bool isCapital = name.front() >= u'A' && name.front() <= u'Z';
    const bool hasCase = found->form == smallRoman || found->form == smallLetters;
    return hasCase && isCapital ? found->form - 1 : found->form;
}

} // namespace

std::u16string numberInForm(int number, unsigned nfc) {
    switch (nfc) {
    case 1:
        return roman(number, true);
    case 2:
        return roman(number, false);
    case 3:
        return letters(number, u'A');
    case 4:
        return letters(number, u'a');
    case 5:
        return ordinal(number);
    case cardinalText:
        return cardinalWords(number).value_or(digits(number));
    case ordinalText:
        return ordinalWords(number).value_or(digits(number));
    case 8:
        return hexadecimal(number);
    case 9:
        return marks(number);
    case 10: // 一〇二
    case 36:
        return digitForDigit(number, u"〇一二三四五六七八九");
    case 11:
    case 33:
    case 35:
    case 37:
    case 39:
        return counting(number);
    case 12:
        return ofCycle(number, u"ｱｲｳｴｵｶｷｸｹｺｻｼｽｾｿﾀﾁﾂﾃﾄﾅﾆﾇﾈﾉﾊﾋﾌﾍﾎﾏﾐﾑﾒﾓﾔﾕﾖﾗﾘﾙﾚﾛﾜｦﾝ");
    case 13:
        return ofCycle(number, u"ｲﾛﾊﾆﾎﾍﾄﾁﾘﾇﾙｦﾜｶﾖﾀﾚｿﾂﾈﾅﾗﾑｳヰﾉｵｸﾔﾏｹﾌｺｴﾃｱｻｷﾕﾒﾐｼヱﾋﾓｾｽﾝ");
    case 20:
        return ofCycle(number, u"アイウエオカキクケコサシスセソタチツテトナニヌネノハヒフヘホ"
                               u"マミムメモヤユヨラリルレロワヲン");
    case 21:
        return ofCycle(number, u"イロハニホヘトチリヌルヲワカヨタレソツネナラムウヰノオクヤマケフ"
                               u"コエテアサキユメミシヱヒモセスン");
    case 24:
        return ofCycle(number, u"가나다라마바사아자차카타파하");
    case 25:
        return ofCycle(number, u"ㄱㄴㄷㄹㅁㅂㅅㅇㅈㅊㅋㅌㅍㅎ");
    case 14:
    case 19:
        return digitForDigit(number, u"０１２３４５６７８９");
    case 34:
        return chinese(number, u"零壹貳參肆伍陸柒捌玖", u"拾佰仟");
    case 16:
    case 38:
        return chinese(number, u"零壹贰叁肆伍陆柒捌玖", u"拾佰仟");
    case 18:
    case 28:
        return enclosed(number, u'①', 20);
    case 22:
        return twoDigits(number);
    case 26:
        return enclosed(number, u'⒈', 20);
    case 27:
        return enclosed(number, u'⑴', 20);
    case 29:
        return enclosed(number, u'㈠', 10);
    case 57:
        return betweenDashes(number);
    case 30:
        return ofCycle(number, u"甲乙丙丁戊己庚辛壬癸");
    case 31:
        return ofCycle(number, u"子丑寅卯辰巳午未申酉戌亥");
    case 32:
        return ofStemsAndBranches(number);
    default:
        return digits(number);
    }
}

std::u16string numberOfField(int number, unsigned nfc) {
    const std::u16string text = numberInForm(number, nfc);
    return nfc == cardinalText || nfc == ordinalText ? foldedName(text) : text;
}

std::optional<unsigned> numberFormOf(std::u16string_view instruction) {
    constexpr std::u16string_view mark = u"\\*";
    for (std::size_t at = instruction.find(mark); at != instruction.npos;
         at = instruction.find(mark, at)) {
        at = std::min(instruction.find_first_not_of(u" \"", at + mark.size()), instruction.size());
        const std::u16string_view name =
            instruction.substr(at, instruction.find_first_of(u" \"\\", at) - at);
        if (const auto form = formNamed(name)) {
            return form;
        }
    }
    return std::nullopt;
}

} // namespace qvnd::word
