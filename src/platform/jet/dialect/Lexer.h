#pragma once

#include <QString>
#include <QStringView>

namespace qvnd::jet {

enum class TokenKind {
    Word,      // letters, digits, underscore and anything beyond ASCII: a bare name, a keyword
               // or a number, as its place decides
    Bracketed, // [any name]
    Text,      // 'text' or "text", a doubled quote standing for one
    Symbol,    // , . ; ( ) * - = < > <= >= <>
    End,
};

struct Token {
    TokenKind Kind = TokenKind::End;
    QString Content; // without brackets and quotes

    bool IsSymbol(QStringView symbol) const {
        return Kind == TokenKind::Symbol && Content == symbol;
    }
    // True for this keyword in any case; a bracketed name is no keyword.
    bool IsWord(QStringView word) const {
        return Kind == TokenKind::Word && word.compare(Content, Qt::CaseInsensitive) == 0;
    }
};

// Cuts a statement into tokens, one at a time. Error 3075 for an open bracket or quote and for a
// character that begins no token.
class Lexer {
public:
    explicit Lexer(const QString& statement) : statement_(statement) {}

    Token Next();
    // Reads a file name in quotes, which may have quotes in it, doubled or not: it ends at the
    // first quote that the word FROM or SELECT follows. The content is as written, not undoubled.
    Token NextFileName();

    const QString& Statement() const { return statement_; }

private:
    void SkipBlanks();
    Token Bracketed();
    Token Quoted();
    Token Word();
    Token Symbol();
    Token Ended(qsizetype from, qsizetype quote);

    const QString statement_;
    qsizetype at_ = 0;
};

} // namespace qvnd::jet
