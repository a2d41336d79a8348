#include "platform/word/layout/FieldExpressions.h"

#include "platform/word/formatting/NameFolding.h"
#include "platform/word/formatting/NumberForms.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace qvnd::layout {

namespace {

constexpr double largest = 1e9; // that is shown
constexpr std::size_t longestNumber = 20;

bool isDigitOf(char16_t c) { return (c >= u'0' && c <= u'9') || c == u'.'; }
bool isLetterOf(char16_t c) { return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z'); }
bool isQuote(char16_t c) { return c == u'"' || c == u'“' || c == u'”'; }

// The number that a text is, all of it.
std::optional<double> numberIn(std::u16string_view text) {
    const bool isNumber = !text.empty() && text.size() <= longestNumber &&
                          std::all_of(text.begin(), text.end(), isDigitOf) &&
                          std::count(text.begin(), text.end(), u'.') <= 1 && text != u".";
    if (!isNumber) {
        return std::nullopt;
    }
    const std::string digits(text.begin(), text.end());
    double number = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return number;
}

// Reads a text from its start on.
class Reading {
public:
    explicit Reading(std::u16string_view text) : text_(text) {}

    bool isAtEnd() {
        skipBlanks();
        return text_.empty();
    }
    char16_t ahead() {
        skipBlanks();
        return text_.empty() ? u'\0' : text_.front();
    }
    bool take(std::u16string_view what) {
        skipBlanks();
        const bool isThere = text_.starts_with(what);
        text_.remove_prefix(isThere ? what.size() : 0);
        return isThere;
    }
    template <class Holds>
    std::u16string_view takeAll(Holds holds) {
        skipBlanks();
        const auto end = std::find_if_not(text_.begin(), text_.end(), holds);
        return cut(static_cast<std::size_t>(end - text_.begin()));
    }
    // A text between quotation marks, or a word up to a blank or what ends it.
    template <class Ends>
    std::optional<std::u16string_view> takeText(Ends ends) {
        if (!isQuote(ahead())) {
            const auto word = takeAll([&](char16_t c) { return c > u' ' && !ends(c); });
            return word.empty() ? std::nullopt : std::optional(word);
        }
        text_.remove_prefix(1);
        const auto end = std::find_if(text_.begin(), text_.end(), isQuote);
        if (end == text_.end()) {
            return std::nullopt;
        }
        const auto text = cut(static_cast<std::size_t>(end - text_.begin()));
        text_.remove_prefix(1);
        return text;
    }

private:
    void skipBlanks() {
        text_.remove_prefix(std::min(text_.find_first_not_of(u' '), text_.size()));
    }
    std::u16string_view cut(std::size_t length) {
        const auto text = text_.substr(0, length);
        text_.remove_prefix(length);
        return text;
    }

    std::u16string_view text_;
};

// Reckons a formula. What it does not understand makes all of it nothing.
class Formula {
public:
    explicit Formula(std::u16string_view text) : text_(text) {}

    std::optional<double> value() {
        const auto result = sum();
        return text_.isAtEnd() ? result : std::nullopt;
    }

private:
    using Value = std::optional<double>;
    static constexpr int deepest = 50;

    Value sum() {
        Value result = product();
        while (result && (text_.ahead() == u'+' || text_.ahead() == u'-')) {
            const bool adds = text_.take(u"+");
            const Value next = (adds || text_.take(u"-")) ? product() : Value();
            result = next ? Value(adds ? *result + *next : *result - *next) : Value();
        }
        return result;
    }

    Value product() {
        Value result = single();
        while (result && (text_.ahead() == u'*' || text_.ahead() == u'/')) {
            const bool multiplies = text_.take(u"*");
            const Value next = (multiplies || text_.take(u"/")) ? single() : Value();
            const bool isSound = next && (multiplies || *next != 0);
            result = !isSound ? Value() : multiplies ? *result * *next : *result / *next;
        }
        return result;
    }

    Value single() {
        if (++depth_ > deepest) {
            return {};
        }
        Value result;
        if (text_.take(u"-")) {
            result = single();
            result = result ? Value(-*result) : Value();
        } else if (text_.take(u"(")) {
            result = sum();
            result = text_.take(u")") ? result : Value();
        } else if (isLetterOf(text_.ahead())) {
            result = function(word::foldedName(text_.takeAll(isLetterOf)));
        } else {
            result = numberIn(text_.takeAll(isDigitOf));
        }
        --depth_;
        return result;
    }

    Value function(const std::u16string& name) {
        const bool takesTwo = name == u"mod";
        if ((name != u"int" && !takesTwo) || !text_.take(u"(")) {
            return {};
        }
        const Value first = sum();
        const bool goesOn = takesTwo && (text_.take(u",") || text_.take(u";"));
        const Value second = goesOn ? sum() : Value();
        if (!text_.take(u")") || !first || (takesTwo && (!second || *second == 0))) {
            return {};
        }
        const double divisor = second.value_or(1);
        return takesTwo ? *first - divisor * std::floor(*first / divisor) : std::trunc(*first);
    }

    Reading text_;
    int depth_ = 0;
};

// As a field without a form for it shows it: no more than two digits behind the point.
std::u16string plainly(double value) {
    constexpr long long hundred = 100;
    const long long parts = std::llround(std::abs(value) * hundred);
    std::string text = std::to_string(parts / hundred);
    if (const long long behind = parts % hundred; behind != 0) {
        text += behind < 10 ? ".0" : ".";
        text += std::to_string(behind % 10 == 0 ? behind / 10 : behind);
    }
    text.insert(0, value < 0 && parts != 0 ? "-" : "");
    return {text.begin(), text.end()};
}

// With as many digits as the picture has noughts.
std::optional<std::u16string> inPicture(double value, std::u16string_view picture) {
    if (picture.find_first_not_of(u"0#") != std::u16string_view::npos) {
        return std::nullopt;
    }
    const std::string text = std::to_string(std::lround(std::abs(value)));
    std::u16string digits(text.begin(), text.end());
    const auto least = static_cast<std::size_t>(std::count(picture.begin(), picture.end(), u'0'));
    digits.insert(0, least > digits.size() ? least - digits.size() : 0, u'0');
    digits.insert(0, value < 0 ? 1 : 0, u'-');
    return digits;
}

std::optional<bool> compared(std::u16string_view relation, int order) {
    if (relation == u"=") {
        return order == 0;
    }
    if (relation == u"<>") {
        return order != 0;
    }
    if (relation == u"<") {
        return order < 0;
    }
    if (relation == u">") {
        return order > 0;
    }
    if (relation == u"<=") {
        return order <= 0;
    }
    return relation == u">=" ? std::optional(order >= 0) : std::nullopt;
}

// Numbers are compared as such, all else as text.
int orderOf(std::u16string_view one, std::u16string_view other) {
    const auto first = numberIn(one);
    const auto second = numberIn(other);
    if (!first || !second) {
        return one.compare(other);
    }
    return *first < *second ? -1 : *first > *second ? 1 : 0;
}

} // namespace

std::optional<std::u16string> formulaShown(std::u16string_view instruction) {
    constexpr std::u16string_view pictureMark = u"\\#";
    const std::u16string_view switches =
        instruction.substr(std::min(instruction.find(u'\\'), instruction.size()));
    Reading whole(instruction.substr(0, instruction.size() - switches.size()));
    if (!whole.take(u"=")) {
        return std::nullopt;
    }
    const auto value = Formula(whole.takeAll([](char16_t) { return true; })).value();
    if (!value || !(std::abs(*value) <= largest)) { // or no number at all
        return std::nullopt;
    }
    if (const auto at = switches.find(pictureMark); at != std::u16string_view::npos) {
        Reading rest(switches.substr(at + pictureMark.size()));
        const auto picture = rest.takeText([](char16_t c) { return c == u'\\'; });
        return picture ? inPicture(*value, *picture) : std::nullopt;
    }
    const auto form = word::numberFormOf(switches);
    return form ? word::numberOfField(static_cast<int>(std::lround(*value)), *form)
                : plainly(*value);
}

std::optional<std::u16string> conditionShown(std::u16string_view instruction) {
    const auto isSign = [](char16_t c) { return c == u'=' || c == u'<' || c == u'>'; };
    const auto endsNothing = [](char16_t c) { return c == u'\\'; };
    Reading text(instruction);
    if (word::foldedName(text.takeAll(isLetterOf)) != u"if") {
        return std::nullopt;
    }
    const auto one = text.takeText(isSign);
    const auto relation = text.takeAll(isSign);
    const auto other = text.takeText(isSign);
    if (!one || !other) {
        return std::nullopt;
    }
    const auto holds = compared(relation, orderOf(*one, *other));
    const auto first = text.takeText(endsNothing);
    if (!holds || !first) {
        return std::nullopt;
    }
    const auto second = text.takeText(endsNothing).value_or(std::u16string_view());
    return std::u16string(*holds ? *first : second);
}

} // namespace qvnd::layout
