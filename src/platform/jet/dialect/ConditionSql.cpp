#include "platform/jet/dialect/ConditionSql.h"

#include "platform/error/RunTimeError.h"
#include "platform/jet/Failure.h"
#include "platform/jet/TextOrder.h"
#include "platform/jet/TextPattern.h"
#include "platform/jet/file/SameText.h"

namespace qvnd::jet {

namespace {

enum class Kind { Text, Number, Date, Truth, Null };

Kind kindOf(FieldType type) {
    switch (type) {
    case FieldType::Text:
    case FieldType::Memo:
        return Kind::Text;
    case FieldType::Date:
        return Kind::Date;
    default:
        return Kind::Number;
    }
}

Kind kindOf(const Value& value) {
    if (value.IsNull()) {
        return Kind::Null;
    }
    return value.IsText() ? Kind::Text : Kind::Number;
}

// Writes one condition; `Write` appends to the SQL and tells what kind of thing it wrote.
class Translation {
public:
    explicit Translation(const StoredTable& table) : table_(table) {}

    Kind Write(const Expression& expression) {
        switch (expression.Kind) {
        case ExpressionKind::Field:
            return WriteField(expression.Name);
        case ExpressionKind::Literal:
            return WriteLiteral(expression.Content);
        case ExpressionKind::Comparison:
            return WriteComparison(expression);
        case ExpressionKind::Like:
            return WriteLike(expression);
        case ExpressionKind::IsNull:
            return WriteIsNull(expression);
        case ExpressionKind::And:
            return WriteJoined(expression, " AND ");
        case ExpressionKind::Or:
            return WriteJoined(expression, " OR ");
        case ExpressionKind::Not:
            return WriteNot(expression);
        case ExpressionKind::Minus:
            return WriteMinus(expression);
        case ExpressionKind::Function:
            break;
        }
        return WriteFunction(expression);
    }

    void WriteTruth(const Expression& expression) {
        const Kind kind = Write(expression);
        if (kind == Kind::Text || kind == Kind::Date) {
            failCriteriaTypeMismatch();
        }
    }

    ConditionSql Result() && { return std::move(result_); }

private:
    Kind WriteField(const QString& name) {
        const int position = table_.PositionOf(name);
        if (position < 0) {
            failUnknownParameter(name);
        }
        result_.Sql += table_.ColumnName(position);
        return kindOf(table_.Definition.Fields[static_cast<std::size_t>(position)].Type);
    }

    Kind WriteLiteral(const Value& value) {
        result_.Parameters.push_back(value);
        result_.Sql += "?" + QByteArray::number(static_cast<int>(result_.Parameters.size()));
        return kindOf(value);
    }

    // A text field that is to have a text given in words; an index can answer that. False for
    // anything else.
    bool WriteSameText(const Expression& field, const Expression& text) {
        const bool isPair = field.Kind == ExpressionKind::Field && text.Content.IsText();
        const int position = isPair ? table_.PositionOf(field.Name) : -1;
        if (position < 0 ||
            !table_.Definition.Fields[static_cast<std::size_t>(position)].IsText()) {
            return false;
        }
        result_.Sql +=
            sameTextSql(table_.ColumnName(position), text.Content.ToText(), result_.Parameters);
        return true;
    }

    Kind WriteComparison(const Expression& expression) {
        const Expression& first = expression.Parts[0];
        const Expression& second = expression.Parts[1];
        if (expression.Name == u"=" &&
            (WriteSameText(first, second) || WriteSameText(second, first))) {
            return Kind::Truth;
        }
        result_.Sql += '(';
        const Kind left = Write(expression.Parts[0]);
        result_.Sql += expression.Name.toLatin1();
        const Kind right = Write(expression.Parts[1]);
        const bool anyNull = left == Kind::Null || right == Kind::Null;
        if (left != right && !anyNull) {
            failCriteriaTypeMismatch();
        }
        result_.Sql += left == Kind::Text ? " COLLATE JET)" : ")";
        return Kind::Truth;
    }

    Kind WriteLike(const Expression& expression) {
        const Expression& pattern = expression.Parts[1];
        if (pattern.Content.IsText() && !isPattern(pattern.Content.ToText())) {
            fail(error::patternInvalid, QStringLiteral("无效的模式字符串"));
        }
        WriteCall("jet_like", expression.Parts);
        return Kind::Truth;
    }

    Kind WriteIsNull(const Expression& expression) {
        result_.Sql += '(';
        Write(expression.Parts[0]);
        result_.Sql += " IS NULL)";
        return Kind::Truth;
    }

    Kind WriteJoined(const Expression& expression, const char* word) {
        const char* before = "(";
        for (const Expression& term : expression.Parts) {
            result_.Sql += before;
            WriteTruth(term);
            before = word;
        }
        result_.Sql += ')';
        return Kind::Truth;
    }

    Kind WriteNot(const Expression& expression) {
        result_.Sql += "(NOT ";
        WriteTruth(expression.Parts[0]);
        result_.Sql += ')';
        return Kind::Truth;
    }

    Kind WriteMinus(const Expression& expression) {
        result_.Sql += "(-";
        const Kind kind = Write(expression.Parts[0]);
        if (kind != Kind::Number && kind != Kind::Null) {
            failCriteriaTypeMismatch();
        }
        result_.Sql += ')';
        return kind;
    }

    Kind WriteFunction(const Expression& expression) {
        if (!sameName(expression.Name, u"instr") || expression.Parts.size() != 2) {
            failUndefinedFunction(expression.Name);
        }
        WriteCall("jet_instr", expression.Parts);
        return Kind::Number;
    }

    void WriteCall(const char* function, const std::vector<Expression>& arguments) {
        result_.Sql += function;
        char before = '(';
        for (const Expression& argument : arguments) {
            result_.Sql += before;
            Write(argument);
            before = ',';
        }
        result_.Sql += ')';
    }

    const StoredTable& table_;
    ConditionSql result_;
};

} // namespace

void ConditionSql::BindTo(Statement& statement) const {
    int position = 0;
    for (const Value& parameter : Parameters) {
        statement.Bind(++position, parameter);
    }
}

ConditionSql translated(const Expression& condition, const StoredTable& table) {
    Translation translation(table);
    translation.WriteTruth(condition);
    return std::move(translation).Result();
}

ConditionSql translatedWhere(const std::optional<Expression>& where, const StoredTable& table) {
    if (!where) {
        return {};
    }
    ConditionSql condition = translated(*where, table);
    condition.Sql.prepend(" WHERE ");
    return condition;
}

QByteArray translatedOrder(const std::vector<OrderItem>& order, const StoredTable& table) {
    QByteArray sql = " ORDER BY ";
    for (const OrderItem& item : order) {
        const int position = table.PositionOf(item.Field);
        if (position < 0) {
            failUnknownParameter(item.Field);
        }
        const bool isText = table.Definition.Fields[static_cast<std::size_t>(position)].IsText();
        sql += table.ColumnName(position) + (isText ? " COLLATE JET" : "") +
               (item.Descending ? " DESC," : " ASC,");
    }
    return sql + "rowid";
}

} // namespace qvnd::jet
