#include "platform/jet/file/Connection.h"

#include <sqlite3.h>

namespace qvnd::jet {

namespace {

QString storedDate(const QDateTime& moment) {
    return moment.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}

QDateTime dateFromStored(const QString& text) {
    return QDateTime::fromString(text, QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}

bool isWhole(FieldType type) {
    return type == FieldType::Byte || type == FieldType::Integer || type == FieldType::Long;
}

} // namespace

Statement::Statement(Connection& connection, const QByteArray& sql) : connection_(connection) {
    if (sqlite3_prepare_v2(connection.Handle(), sql.constData(), static_cast<int>(sql.size()),
                           &statement_, nullptr) != SQLITE_OK) {
        connection.Fail();
    }
}

Statement::~Statement() { sqlite3_finalize(statement_); }

void Statement::Bind(int position, const Value& value) {
    int code = SQLITE_OK;
    if (value.IsNull()) {
        code = sqlite3_bind_null(statement_, position);
    } else if (value.IsNumber()) {
        const double number = value.ToDouble();
        code = sqlite3_bind_double(statement_, position, number);
    } else {
        const QString text = value.IsDate() ? storedDate(value.ToDate()) : value.ToText();
        const QByteArray utf8 = text.toUtf8();
        code = sqlite3_bind_text(statement_, position, utf8.constData(),
                                 static_cast<int>(utf8.size()), SQLITE_TRANSIENT);
    }
    if (code != SQLITE_OK) {
        connection_.Fail();
    }
}

void Statement::Bind(int position, std::int64_t number) {
    if (sqlite3_bind_int64(statement_, position, number) != SQLITE_OK) {
        connection_.Fail();
    }
}

void Statement::Bind(int position, const QByteArray& bytes) {
    if (sqlite3_bind_blob(statement_, position, bytes.constData(), static_cast<int>(bytes.size()),
                          SQLITE_TRANSIENT) != SQLITE_OK) {
        connection_.Fail();
    }
}

void Statement::BindColumn(int position, const Statement& source, int column) {
    if (sqlite3_bind_value(statement_, position, sqlite3_column_value(source.statement_, column)) !=
        SQLITE_OK) {
        connection_.Fail();
    }
}

bool Statement::Step() {
    const int code = sqlite3_step(statement_);
    if (code != SQLITE_ROW && code != SQLITE_DONE) {
        sqlite3_reset(statement_);
        connection_.Fail();
    }
    return code == SQLITE_ROW;
}

void Statement::Run() {
    Reset();
    Step();
    Reset();
}

void Statement::Reset() { sqlite3_reset(statement_); }

std::int64_t Statement::Number(int column) const {
    return sqlite3_column_int64(statement_, column);
}

QString Statement::Text(int column) const {
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement_, column));
    return QString::fromUtf8(text, sqlite3_column_bytes(statement_, column));
}

QByteArray Statement::Bytes(int column) const {
    const auto* bytes = static_cast<const char*>(sqlite3_column_blob(statement_, column));
    return {bytes, sqlite3_column_bytes(statement_, column)};
}

int Statement::Columns() const { return sqlite3_column_count(statement_); }

QString Statement::ColumnName(int column) const {
    return QString::fromUtf8(sqlite3_column_name(statement_, column));
}

bool Statement::IsNull(int column) const {
    return sqlite3_column_type(statement_, column) == SQLITE_NULL;
}

Value Statement::Read(int column, FieldType type) const {
    if (IsNull(column)) {
        return {};
    }
    if (isWhole(type)) {
        return static_cast<std::int32_t>(sqlite3_column_int(statement_, column));
    }
    if (type == FieldType::Single) {
        return static_cast<float>(sqlite3_column_double(statement_, column));
    }
    if (type == FieldType::Double) {
        return sqlite3_column_double(statement_, column);
    }
    return type == FieldType::Date ? Value(dateFromStored(Text(column))) : Value(Text(column));
}

} // namespace qvnd::jet
