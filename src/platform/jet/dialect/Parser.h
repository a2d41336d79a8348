#pragma once

#include "platform/jet/dialect/Lexer.h"
#include "platform/jet/dialect/Syntax.h"

#include <functional>

namespace qvnd::jet {

// Reads one statement of the query dialect:
//
//   SELECT fields FROM table [WHERE condition] [ORDER BY field [ASC | DESC], ...]
//   SELECT fields INTO table [IN 'file'] FROM table [WHERE ...] [ORDER BY ...]
//   INSERT INTO table [IN 'file'] SELECT fields FROM table [WHERE ...] [ORDER BY ...]
//   DELETE [*] FROM table [WHERE condition]
//   DROP TABLE table
//
// Behind FROM the table may be given a second name, as the dialect has it, so a bare name with a
// blank in it is a table that is not found rather than an error of syntax.
//
// `fields` is * or a list. A name is bare or bracketed; a bare one is no reserved word. Keywords
// are read in any case, a semicolon may end the statement. Everything else is error 3075, with the
// reason in Chinese.
class Parser {
public:
    explicit Parser(const QString& statement);

    Command ParseCommand();
    // A condition alone, as it stands behind WHERE.
    Expression ParseCondition();

private:
    Command ParseSelect();
    Command ParseInsert();
    Command ParseDelete();
    Command ParseDrop();
    void ParseSource(Query& query);
    QStringList ParseFields();
    std::optional<QString> ParseFile();
    std::optional<Expression> ParseWhere();
    std::vector<OrderItem> ParseOrder();

    Expression ParseOr();
    Expression ParseAnd();
    // One term, or several with that word between them.
    Expression ParseTerms(ExpressionKind kind, QStringView word,
                          const std::function<Expression()>& parseTerm);
    Expression ParseNot();
    Expression ParseComparison();
    Expression ParseIsNull(Expression subject);
    Expression ParseOperand();
    Expression ParseWordOperand();
    Expression ParseFunction(const QString& name);
    Expression ParseNumber();

    QString ParseName(QStringView what);
    void ParseAlias();
    // A field, with the table's name and a point before it or not.
    QString ParseField();

    void Advance() { token_ = lexer_.Next(); }
    bool TakeWord(QStringView word);
    bool TakeSymbol(QStringView symbol);
    void ExpectWord(QStringView word);
    void ExpectSymbol(QStringView symbol);
    void ExpectEnd();
    [[noreturn]] void Fail(const QString& reason) const;
    [[noreturn]] void FailExpected(QStringView what) const;

    Lexer lexer_;
    Token token_;
    int depth_ = 0;
};

} // namespace qvnd::jet
