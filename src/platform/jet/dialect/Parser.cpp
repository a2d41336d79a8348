#include "platform/jet/dialect/Parser.h"

#include "platform/jet/Failure.h"
#include "platform/jet/dialect/ReservedWords.h"

namespace qvnd::jet {

Parser::Parser(const QString& statement) : lexer_(statement) { Advance(); }

Command Parser::ParseCommand() {
    if (TakeWord(u"select")) {
        return ParseSelect();
    }
    if (TakeWord(u"insert")) {
        return ParseInsert();
    }
    if (TakeWord(u"delete")) {
        return ParseDelete();
    }
    if (TakeWord(u"drop")) {
        return ParseDrop();
    }
    FailExpected(u"SELECT、INSERT、DELETE 或 DROP");
}

Command Parser::ParseSelect() {
    Query query;
    query.Fields = ParseFields();
    if (!TakeWord(u"into")) {
        ParseSource(query);
        ExpectEnd();
        return query;
    }
    SelectInto made;
    made.Table = ParseName(u"表名");
    made.File = ParseFile();
    ParseSource(query);
    ExpectEnd();
    made.From = std::move(query);
    return made;
}

Command Parser::ParseInsert() {
    ExpectWord(u"into");
    InsertInto insert;
    insert.Table = ParseName(u"表名");
    insert.File = ParseFile();
    ExpectWord(u"select");
    insert.From.Fields = ParseFields();
    ParseSource(insert.From);
    ExpectEnd();
    return insert;
}

Command Parser::ParseDelete() {
    TakeSymbol(u"*");
    ExpectWord(u"from");
    DeleteFrom removal;
    removal.Table = ParseName(u"表名");
    ParseAlias();
    removal.Where = ParseWhere();
    ExpectEnd();
    return removal;
}

Command Parser::ParseDrop() {
    ExpectWord(u"table");
    DropTable drop{ParseName(u"表名")};
    ExpectEnd();
    return drop;
}

void Parser::ParseSource(Query& query) {
    ExpectWord(u"from");
    query.Table = ParseName(u"表名");
    ParseAlias();
    query.Where = ParseWhere();
    query.Order = ParseOrder();
}

QStringList Parser::ParseFields() {
    QStringList fields;
    if (TakeSymbol(u"*")) {
        return fields;
    }
    do {
        fields << ParseField();
    } while (TakeSymbol(u","));
    return fields;
}

std::optional<QString> Parser::ParseFile() {
    if (!token_.IsWord(u"in")) {
        return std::nullopt;
    }
    QString file = lexer_.NextFileName().Content;
    Advance();
    return file;
}

std::optional<Expression> Parser::ParseWhere() {
    if (!TakeWord(u"where")) {
        return std::nullopt;
    }
    return ParseOr();
}

std::vector<OrderItem> Parser::ParseOrder() {
    std::vector<OrderItem> items;
    if (!TakeWord(u"order")) {
        return items;
    }
    ExpectWord(u"by");
    do {
        OrderItem item{ParseField()};
        item.Descending = TakeWord(u"desc");
        if (!item.Descending) {
            TakeWord(u"asc");
        }
        items.push_back(item);
    } while (TakeSymbol(u","));
    return items;
}

QString Parser::ParseName(QStringView what) {
    const bool bare = token_.Kind == TokenKind::Word && !isReservedWord(token_.Content);
    const bool bracketed = token_.Kind == TokenKind::Bracketed && !token_.Content.isEmpty();
    if (!bare && !bracketed) {
        FailExpected(what);
    }
    QString name = token_.Content;
    Advance();
    return name;
}

void Parser::ParseAlias() {
    const bool named = TakeWord(u"as");
    const bool bare = token_.Kind == TokenKind::Word && !isReservedWord(token_.Content);
    if (named || bare || token_.Kind == TokenKind::Bracketed) {
        ParseName(u"别名");
    }
}

QString Parser::ParseField() {
    QString name = ParseName(u"字段名");
    while (TakeSymbol(u".")) {
        name = ParseName(u"字段名");
    }
    return name;
}

bool Parser::TakeWord(QStringView word) {
    const bool taken = token_.IsWord(word);
    if (taken) {
        Advance();
    }
    return taken;
}

bool Parser::TakeSymbol(QStringView symbol) {
    const bool taken = token_.IsSymbol(symbol);
    if (taken) {
        Advance();
    }
    return taken;
}

void Parser::ExpectWord(QStringView word) {
    if (!TakeWord(word)) {
        FailExpected(word.toString().toUpper());
    }
}

void Parser::ExpectSymbol(QStringView symbol) {
    if (!TakeSymbol(symbol)) {
        FailExpected(symbol);
    }
}

void Parser::ExpectEnd() {
    TakeSymbol(u";");
    if (token_.Kind != TokenKind::End) {
        Fail(QStringLiteral("“%1”在这里多余；名称中有空格或标点时须用方括号括起来")
                 .arg(token_.Content));
    }
}

void Parser::Fail(const QString& reason) const { failSyntax(lexer_.Statement(), reason); }

void Parser::FailExpected(QStringView what) const {
    const QString found = token_.Kind == TokenKind::End
                              ? QStringLiteral("语句已经结束")
                              : QStringLiteral("却是“%1”").arg(token_.Content);
    Fail(QStringLiteral("此处应为%1，%2").arg(what, found));
}

} // namespace qvnd::jet
