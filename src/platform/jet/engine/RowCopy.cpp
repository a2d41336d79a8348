#include "platform/jet/engine/RowCopy.h"

#include "platform/error/RunTimeError.h"
#include "platform/jet/Failure.h"
#include "platform/jet/FieldConversion.h"
#include "platform/jet/dialect/ConditionSql.h"
#include "platform/jet/file/SameText.h"

namespace qvnd::jet {

namespace {

const Field& fieldAt(const StoredTable& table, int position) {
    return table.Definition.Fields[static_cast<std::size_t>(position)];
}

// Positions in the source of the fields that the query asks for.
std::vector<int> selected(const Query& query, const StoredTable& source) {
    std::vector<int> positions;
    if (query.Fields.isEmpty()) {
        for (int i = 0; i < static_cast<int>(source.Definition.Fields.size()); ++i) {
            positions.push_back(i);
        }
        return positions;
    }
    for (const QString& name : query.Fields) {
        const int position = source.PositionOf(name);
        if (position < 0) {
            failUnknownParameter(name);
        }
        positions.push_back(position);
    }
    return positions;
}

// One field on its way: where its value comes from (-1: its default) and where it goes.
struct Passage {
    int SourceColumn = -1;
    const Field* From = nullptr;
    const Field* To = nullptr;
    bool Unchanged = false; // every value of the source is a value of the target as it stands
};

bool takesEverythingOf(const Field& to, const Field& from) {
    return to.Type == from.Type && (!to.IsText() || to.AllowZeroLength || !from.AllowZeroLength) &&
           (to.Type != FieldType::Text || to.Size >= from.Size);
}

std::vector<Passage> passages(const std::vector<int>& sourcePositions, const StoredTable& source,
                              const StoredTable& target) {
    std::vector<Passage> result(target.Definition.Fields.size());
    for (std::size_t i = 0; i < result.size(); ++i) {
        result[i].To = &target.Definition.Fields[i];
    }
    int column = 0;
    for (const int position : sourcePositions) {
        const Field& from = fieldAt(source, position);
        const int to = target.PositionOf(from.Name);
        if (to < 0) {
            fail(error::unknownInsertField,
                 QStringLiteral("INSERT INTO 语句中有目标表没有的字段『%1』。").arg(from.Name));
        }
        Passage& passage = result[static_cast<std::size_t>(to)];
        passage.SourceColumn = column++;
        passage.From = &from;
        passage.Unchanged = takesEverythingOf(*passage.To, from);
    }
    return result;
}

QByteArray selectSql(const std::vector<int>& positions, const Query& query,
                     const StoredTable& source, ConditionSql& condition) {
    QByteArrayList columns;
    for (const int position : positions) {
        columns << source.ColumnName(position);
    }
    condition = translatedWhere(query.Where, source);
    return "SELECT " + columns.join(',') + " FROM " + source.TableName() + condition.Sql +
           translatedOrder(query.Order, source);
}

QByteArray insertSql(const StoredTable& target) {
    QByteArrayList places;
    for (std::size_t i = 1; i <= target.Definition.Fields.size(); ++i) {
        places << "?" + QByteArray::number(static_cast<int>(i));
    }
    return "INSERT INTO " + target.TableName() + "(" + target.AllColumns() + ") VALUES(" +
           places.join(',') + ")";
}

// A table may be appended to itself; its rows then have to be known before the first is written.
QByteArray keptApart(const QByteArray& select, const StoredTable& source, const StoredTable& target,
                     bool sameFile) {
    return sameFile && source.Id == target.Id
               ? "WITH jet_rows AS MATERIALIZED (" + select + ") SELECT * FROM jet_rows"
               : select;
}

// Carries one row over and tells the auto-increment field's number, if the row has one.
class Carrier {
public:
    Carrier(std::vector<Passage> passages, StoredTable& target, Statement& reader,
            Statement& writer)
        : passages_(std::move(passages)), target_(target), reader_(reader), writer_(writer),
          row_(passages_.size()), isCompared_(passages_.size()) {
        for (const std::vector<int>& positions : target.UniqueTexts()) {
            for (const int position : positions) {
                isCompared_[static_cast<std::size_t>(position)] = true;
            }
        }
    }

    void CarryRow(Connection& targetFile) {
        for (std::size_t i = 0; i < passages_.size(); ++i) {
            CarryField(i, passages_[i]);
        }
        refuseSameTexts(targetFile, target_, row_);
        writer_.Run();
    }

private:
    void CarryField(std::size_t field, const Passage& passage) {
        const int position = static_cast<int>(field) + 1;
        if (passage.To->IsAutoIncrement()) {
            CarryNumber(position, passage);
        } else if (passage.Unchanged && !isCompared_[field]) {
            writer_.BindColumn(position, reader_, passage.SourceColumn);
        } else {
            row_[field] = ValueFor(passage);
            writer_.Bind(position, row_[field]);
        }
    }

    Value ValueFor(const Passage& passage) const {
        if (passage.SourceColumn < 0) {
            return defaultOf(*passage.To);
        }
        const Value value = reader_.Read(passage.SourceColumn, passage.From->Type);
        return passage.Unchanged ? value : convertedFor(*passage.To, value);
    }

    void CarryNumber(int position, const Passage& passage) {
        const bool given = passage.SourceColumn >= 0 && !reader_.IsNull(passage.SourceColumn);
        const std::int32_t number =
            given ? reader_.Read(passage.SourceColumn, passage.From->Type).ToLong()
                  : target_.NextNumber();
        row_[static_cast<std::size_t>(position - 1)] = Value(number);
        writer_.Bind(position, std::int64_t{number});
        target_.Reach(number);
    }

    std::vector<Passage> passages_;
    StoredTable& target_;
    Statement& reader_;
    Statement& writer_;
    std::vector<Value> row_;       // by position, the values of the unique indexes
    std::vector<bool> isCompared_; // is a field of such an index
};

} // namespace

TableDef definitionOf(const Query& query, const StoredTable& source, const QString& name) {
    TableDef definition(name);
    for (const int position : selected(query, source)) {
        definition.Fields.push_back(fieldAt(source, position));
    }
    return definition;
}

void copyRows(StoreFile& sourceFile, const Query& query, StoreFile& targetFile,
              std::int64_t targetTable) {
    StoredTable& source = sourceFile.TableNamed(query.Table);
    StoredTable& target = targetFile.TableOf(targetTable);
    const std::vector<int> positions = selected(query, source);
    ConditionSql condition;
    const QByteArray select = keptApart(selectSql(positions, query, source, condition), source,
                                        target, &sourceFile == &targetFile);
    Statement reader(sourceFile.Sql(), select);
    condition.BindTo(reader);
    Statement writer(targetFile.Sql(), insertSql(target));
    Carrier carrier(passages(positions, source, target), target, reader, writer);
    while (reader.Step()) {
        carrier.CarryRow(targetFile.Sql());
    }
}

} // namespace qvnd::jet
