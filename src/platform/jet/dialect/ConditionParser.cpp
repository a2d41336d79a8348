#include "platform/jet/dialect/Parser.h"

#include <algorithm>

namespace qvnd::jet {

namespace {

// A condition nested deeper than this is refused: the store's own parser has a stack of fixed size.
constexpr int deepest = 40;
// Of one "and" or "or". The store's own limit is twice as high.
constexpr std::size_t mostTerms = 500;

Expression node(ExpressionKind kind, std::vector<Expression> parts, QString name = {}) {
    return Expression{kind, std::move(name), {}, std::move(parts)};
}

Expression pair(ExpressionKind kind, Expression left, Expression right, QString name = {}) {
    std::vector<Expression> parts;
    parts.push_back(std::move(left));
    parts.push_back(std::move(right));
    return node(kind, std::move(parts), std::move(name));
}

Expression single(ExpressionKind kind, Expression part) {
    std::vector<Expression> parts;
    parts.push_back(std::move(part));
    return node(kind, std::move(parts));
}

Expression literal(Value value) {
    return Expression{ExpressionKind::Literal, {}, std::move(value), {}};
}

bool isComparison(const Token& token) {
    constexpr QStringView operators[] = {u"=", u"<>", u"<", u">", u"<=", u">="};
    return std::any_of(std::begin(operators), std::end(operators),
                       [&](QStringView symbol) { return token.IsSymbol(symbol); });
}

bool isDigits(const QString& text) {
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

} // namespace

Expression Parser::ParseCondition() {
    Expression condition = ParseOr();
    ExpectEnd();
    return condition;
}

Expression Parser::ParseOr() {
    return ParseTerms(ExpressionKind::Or, u"or", [this] { return ParseAnd(); });
}

Expression Parser::ParseAnd() {
    return ParseTerms(ExpressionKind::And, u"and", [this] { return ParseNot(); });
}

Expression Parser::ParseTerms(ExpressionKind kind, QStringView word,
                              const std::function<Expression()>& parseTerm) {
    std::vector<Expression> terms;
    do {
        if (terms.size() == mostTerms) {
            Fail(QStringLiteral("条件的项过多"));
        }
        terms.push_back(parseTerm());
    } while (TakeWord(word));
    return terms.size() == 1 ? std::move(terms.front()) : node(kind, std::move(terms));
}

Expression Parser::ParseNot() {
    if (++depth_ > deepest) {
        Fail(QStringLiteral("条件嵌套过深"));
    }
    Expression result =
        TakeWord(u"not") ? single(ExpressionKind::Not, ParseNot()) : ParseComparison();
    --depth_;
    return result;
}

Expression Parser::ParseComparison() {
    Expression left = ParseOperand();
    if (TakeWord(u"is")) {
        return ParseIsNull(std::move(left));
    }
    if (TakeWord(u"like")) {
        return pair(ExpressionKind::Like, std::move(left), ParseOperand());
    }
    if (TakeWord(u"not")) {
        ExpectWord(u"like");
        return single(ExpressionKind::Not,
                      pair(ExpressionKind::Like, std::move(left), ParseOperand()));
    }
    if (isComparison(token_)) {
        const QString symbol = token_.Content;
        Advance();
        return pair(ExpressionKind::Comparison, std::move(left), ParseOperand(), symbol);
    }
    return left;
}

Expression Parser::ParseIsNull(Expression subject) {
    const bool negated = TakeWord(u"not");
    ExpectWord(u"null");
    Expression test = single(ExpressionKind::IsNull, std::move(subject));
    return negated ? single(ExpressionKind::Not, std::move(test)) : test;
}

Expression Parser::ParseOperand() {
    if (++depth_ > deepest) {
        Fail(QStringLiteral("条件嵌套过深"));
    }
    Expression result;
    if (TakeSymbol(u"(")) {
        result = ParseOr();
        ExpectSymbol(u")");
    } else if (TakeSymbol(u"-")) {
        result = single(ExpressionKind::Minus, ParseOperand());
    } else if (token_.Kind == TokenKind::Text) {
        result = literal(Value(token_.Content));
        Advance();
    } else {
        result = ParseWordOperand();
    }
    --depth_;
    return result;
}

Expression Parser::ParseWordOperand() {
    if (TakeWord(u"null")) {
        return literal(Value());
    }
    if (token_.Kind == TokenKind::Word && isDigits(token_.Content)) {
        return ParseNumber();
    }
    const bool mayCall = token_.Kind == TokenKind::Word;
    const QString word = token_.Content;
    QString field = ParseField();
    if (mayCall && field == word && TakeSymbol(u"(")) {
        return ParseFunction(word);
    }
    return Expression{ExpressionKind::Field, std::move(field), {}, {}};
}

Expression Parser::ParseFunction(const QString& name) {
    std::vector<Expression> arguments;
    if (!TakeSymbol(u")")) {
        do {
            arguments.push_back(ParseOr());
        } while (TakeSymbol(u","));
        ExpectSymbol(u")");
    }
    return node(ExpressionKind::Function, std::move(arguments), name);
}

Expression Parser::ParseNumber() {
    QString digits = token_.Content;
    Advance();
    if (TakeSymbol(u".")) {
        if (token_.Kind != TokenKind::Word || !isDigits(token_.Content)) {
            FailExpected(u"小数");
        }
        digits += u'.' + token_.Content;
        Advance();
    }
    return literal(Value(numberOf(digits)));
}

} // namespace qvnd::jet
