#pragma once

#include "platform/jet/dialect/Syntax.h"
#include "platform/jet/file/Catalogue.h"

namespace qvnd::jet {

// A condition as SQLite understands it. Every value of the statement is a parameter, and every
// name that of a column of the table, quoted, so nothing in a statement can break out of it.
struct ConditionSql {
    QByteArray Sql;
    std::vector<Value> Parameters;

    void BindTo(Statement& statement) const;
};

// Errors: 3061 an unknown field, 3085 an unknown function, 3464 a text compared with a number or
// used as a truth value, 93 a LIKE pattern with an open bracket.
ConditionSql translated(const Expression& condition, const StoredTable& table);

// " WHERE ..." or nothing.
ConditionSql translatedWhere(const std::optional<Expression>& where, const StoredTable& table);

// " ORDER BY ...", at last in the order in which the rows came. Error 3061.
QByteArray translatedOrder(const std::vector<OrderItem>& order, const StoredTable& table);

} // namespace qvnd::jet
