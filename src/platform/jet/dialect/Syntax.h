#pragma once

#include "platform/jet/Value.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <optional>
#include <variant>
#include <vector>

// What the parser makes of a statement.
namespace qvnd::jet {

enum class ExpressionKind {
    Field,      // Name
    Literal,    // Content
    Comparison, // Name is the operator: = <> < > <= >=; two parts
    Like,       // two parts: text, pattern
    IsNull,     // one part
    And,        // two parts or more
    Or,         // two parts or more
    Not,        // one part
    Minus,      // one part
    Function,   // Name, its arguments the parts
};

struct Expression {
    ExpressionKind Kind = ExpressionKind::Literal;
    QString Name;
    Value Content;
    std::vector<Expression> Parts;
};

struct OrderItem {
    QString Field;
    bool Descending = false;
};

struct Query {
    QStringList Fields; // empty for *
    QString Table;
    std::optional<Expression> Where;
    std::vector<OrderItem> Order;
};

// SELECT ... INTO Table [IN 'File'] FROM ...; File as written between the quotes.
struct SelectInto {
    QString Table;
    std::optional<QString> File;
    Query From;
};

// INSERT INTO Table [IN 'File'] SELECT ...
struct InsertInto {
    QString Table;
    std::optional<QString> File;
    Query From;
};

struct DeleteFrom {
    QString Table;
    std::optional<Expression> Where;
};

struct DropTable {
    QString Table;
};

using Command = std::variant<Query, SelectInto, InsertInto, DeleteFrom, DropTable>;

} // namespace qvnd::jet
