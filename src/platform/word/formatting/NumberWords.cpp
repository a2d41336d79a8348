#include "platform/word/formatting/NumberWords.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>
#include <utility>

namespace qvnd::word {

namespace {

using Word = std::u16string_view;

constexpr unsigned hundred = 100;
constexpr unsigned thousand = 1000;
constexpr int million = 1'000'000;

std::u16string belowHundred(unsigned number) {
    constexpr std::array<Word, 20> small{
        u"zero",     u"one",     u"two",     u"three",     u"four",     u"five",    u"six",
        u"seven",    u"eight",   u"nine",    u"ten",       u"eleven",   u"twelve",  u"thirteen",
        u"fourteen", u"fifteen", u"sixteen", u"seventeen", u"eighteen", u"nineteen"};
    constexpr std::array<Word, 8> tens{u"twenty", u"thirty",  u"forty",  u"fifty",
                                       u"sixty",  u"seventy", u"eighty", u"ninety"};
    if (number < small.size()) {
        return std::u16string(small.at(number));
    }
    std::u16string text(tens.at(number / 10 - 2));
    if (number % 10 != 0) {
        text += u'-';
        text += small.at(number % 10);
    }
    return text;
}

std::u16string belowThousand(unsigned number) {
    if (number < hundred) {
        return belowHundred(number);
    }
    std::u16string text = belowHundred(number / hundred) + u" hundred";
    return number % hundred == 0 ? text : text + u" " + belowHundred(number % hundred);
}

std::u16string belowMillion(unsigned number) {
    if (number < thousand) {
        return belowThousand(number);
    }
    std::u16string text = belowThousand(number / thousand) + u" thousand";
    return number % thousand == 0 ? text : text + u" " + belowThousand(number % thousand);
}

bool hasWords(int number) { return number >= 0 && number < million; }

std::u16string capitalised(std::u16string text) {
    text.front() = static_cast<char16_t>(text.front() - u'a' + u'A');
    return text;
}

// Of the last word of a number: one, two and some others have ordinals of their own.
std::u16string ordinalOf(Word word) {
    constexpr std::array<std::pair<Word, Word>, 7> own{{{u"one", u"first"},
                                                        {u"two", u"second"},
                                                        {u"three", u"third"},
                                                        {u"five", u"fifth"},
                                                        {u"eight", u"eighth"},
                                                        {u"nine", u"ninth"},
                                                        {u"twelve", u"twelfth"}}};
    const auto* found =
        std::find_if(own.begin(), own.end(), [&](const auto& pair) { return pair.first == word; });
    if (found != own.end()) {
        return std::u16string(found->second);
    }
    if (word.ends_with(u'y')) {
        return std::u16string(word.substr(0, word.size() - 1)) + u"ieth";
    }
    return std::u16string(word) + u"th";
}

} // namespace

std::optional<std::u16string> cardinalWords(int number) {
    return hasWords(number)
               ? std::optional(capitalised(belowMillion(static_cast<unsigned>(number))))
               : std::nullopt;
}

std::optional<std::u16string> ordinalWords(int number) {
    if (!hasWords(number)) {
        return std::nullopt;
    }
    const std::u16string text = belowMillion(static_cast<unsigned>(number));
    const std::size_t before = text.find_last_of(u" -");
    const std::size_t last = before == std::u16string::npos ? 0 : before + 1;
    return capitalised(text.substr(0, last) + ordinalOf(std::u16string_view(text).substr(last)));
}

} // namespace qvnd::word
