#include "platform/jet/dialect/Lexer.h"

#include "platform/jet/Failure.h"

namespace qvnd::jet {

namespace {

bool isBlank(QChar c) { return c == u' ' || c == u'\t' || c == u'\r' || c == u'\n'; }

bool isWordCharacter(QChar c) {
    const char16_t u = c.unicode();
    return u >= 0x80 || u == u'_' || (u >= u'0' && u <= u'9') || (u >= u'A' && u <= u'Z') ||
           (u >= u'a' && u <= u'z');
}

bool startsWithWord(QStringView text, QStringView word) {
    return text.startsWith(word, Qt::CaseInsensitive) &&
           (text.size() == word.size() || !isWordCharacter(text[word.size()]));
}

bool queryFollows(QStringView rest) {
    const QStringView text = rest.trimmed();
    return startsWithWord(text, u"FROM") || startsWithWord(text, u"SELECT");
}

} // namespace

void Lexer::SkipBlanks() {
    while (at_ < statement_.size() && isBlank(statement_[at_])) {
        ++at_;
    }
}

Token Lexer::Next() {
    SkipBlanks();
    if (at_ == statement_.size()) {
        return {};
    }
    const QChar c = statement_[at_];
    if (c == u'[') {
        return Bracketed();
    }
    if (c == u'\'' || c == u'"') {
        return Quoted();
    }
    return isWordCharacter(c) ? Word() : Symbol();
}

Token Lexer::Bracketed() {
    const qsizetype close = statement_.indexOf(u']', at_);
    if (close < 0) {
        failSyntax(statement_, QStringLiteral("方括号没有闭合"));
    }
    const QString name = statement_.mid(at_ + 1, close - at_ - 1);
    at_ = close + 1;
    return {TokenKind::Bracketed, name};
}

Token Lexer::Quoted() {
    const QChar quote = statement_[at_++];
    QString text;
    for (; at_ < statement_.size(); ++at_) {
        if (statement_[at_] == quote) {
            if (at_ + 1 == statement_.size() || statement_[at_ + 1] != quote) {
                ++at_;
                return {TokenKind::Text, text};
            }
            ++at_;
        }
        text += statement_[at_];
    }
    failSyntax(statement_, QStringLiteral("引号没有闭合"));
}

Token Lexer::Word() {
    const qsizetype from = at_;
    while (at_ < statement_.size() && isWordCharacter(statement_[at_])) {
        ++at_;
    }
    return {TokenKind::Word, statement_.mid(from, at_ - from)};
}

Token Lexer::Symbol() {
    const QStringView rest = QStringView(statement_).mid(at_);
    for (const QStringView symbol :
         {u"<=", u">=", u"<>", u",", u".", u";", u"(", u")", u"*", u"-", u"=", u"<", u">"}) {
        if (rest.startsWith(symbol)) {
            at_ += symbol.size();
            return {TokenKind::Symbol, symbol.toString()};
        }
    }
    failSyntax(statement_, QStringLiteral("不能使用字符“%1”").arg(statement_[at_]));
}

Token Lexer::NextFileName() {
    SkipBlanks();
    const QChar quote = at_ < statement_.size() ? statement_[at_] : QChar();
    if (quote != u'\'' && quote != u'"') {
        failSyntax(statement_, QStringLiteral("IN 之后应有用引号括起来的文件名"));
    }
    const qsizetype from = at_ + 1;
    qsizetype last = -1;
    for (qsizetype i = statement_.indexOf(quote, from); i >= 0;
         i = statement_.indexOf(quote, i + 1)) {
        last = i;
        if (queryFollows(QStringView(statement_).mid(i + 1))) {
            return Ended(from, i);
        }
    }
    if (last < 0) {
        failSyntax(statement_, QStringLiteral("引号没有闭合"));
    }
    return Ended(from, last);
}

Token Lexer::Ended(qsizetype from, qsizetype quote) {
    at_ = quote + 1;
    return {TokenKind::Text, statement_.mid(from, quote - from)};
}

} // namespace qvnd::jet
