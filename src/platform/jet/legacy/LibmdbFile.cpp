#include "platform/jet/legacy/LibmdbFile.h"

#include "platform/jet/legacy/JetText.h"

#include <QFile>
#include <QTimeZone>

#include <cmath>
#include <cstdlib>
#include <stdexcept>

#include <mdbtools.h>

namespace qvnd::jet::legacy {

namespace {

// Longer than any memo that the engine lets a user type; a longer one counts as damage.
constexpr std::size_t longestText = std::size_t{64} << 20;
constexpr std::uint32_t memoLengthMask = 0x3FFFFFFF;
constexpr std::uint32_t memoInline = 0x80000000;
constexpr int memoHeader = 12;

[[noreturn]] void failDamaged() { throw std::runtime_error("damaged"); }

template <class Pointer>
Pointer* at(GPtrArray* array, std::size_t index) {
    return static_cast<Pointer*>(g_ptr_array_index(array, index));
}

// An open file. Bytes of version 3 texts come through one character each, so that they can be
// decoded here.
class File {
public:
    explicit File(const QString& path) {
        qputenv("MDB_JET3_CHARSET", "ISO-8859-1");
        qputenv("MDBICONV", "UTF-8");
        qunsetenv("MDBOPTS");
        handle_ = mdb_open(QFile::encodeName(path).constData(), MDB_NOFLAGS);
        if (handle_ == nullptr) {
            failDamaged();
        }
        mdb_set_bind_size(handle_, longestText);
        // The catalogue lists itself; in a file that is cut it may be out of reach.
        if (mdb_read_catalog(handle_, MDB_TABLE) == nullptr || handle_->num_catalog == 0) {
            failDamaged();
        }
    }
    ~File() { mdb_close(handle_); }
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    MdbHandle* handle() const { return handle_; }

    QString textOf(const char* utf8) const {
        const QString text = QString::fromUtf8(utf8);
        return IS_JET3(handle_) ? textOfBytes(text.toLatin1(), handle_->f->code_page)
                                : mendedText(text);
    }

    std::vector<MdbCatalogEntry*> userTables() const {
        std::vector<MdbCatalogEntry*> tables;
        for (unsigned i = 0; i < handle_->num_catalog; ++i) {
            auto* entry = at<MdbCatalogEntry>(handle_->catalog, i);
            if (entry->object_type == MDB_TABLE && mdb_is_user_table(entry) != 0) {
                tables.push_back(entry);
            }
        }
        return tables;
    }

private:
    MdbHandle* handle_ = nullptr;
};

FieldType typeOf(const MdbColumn& column) {
    switch (column.col_type) {
    case MDB_BOOL:
    case MDB_BYTE:
    case MDB_INT:
    case MDB_LONGINT:
        return FieldType::Long;
    case MDB_FLOAT:
    case MDB_DOUBLE:
    case MDB_MONEY:
        return FieldType::Double;
    case MDB_DATETIME:
        return FieldType::Date;
    case MDB_MEMO:
        return FieldType::Memo;
    default:
        return FieldType::Text;
    }
}

// Whole days from 30 December 1899, the time of day as a fraction.
Value momentOf(double days) {
    constexpr double first = -657434; // the year 100
    constexpr double last = 2958466;  // the year 10000
    constexpr double milliseconds = 86400000;
    if (!(days >= first && days < last)) {
        return {};
    }
    const double whole = std::trunc(days);
    const auto time = static_cast<int>(std::lround(std::abs(days - whole) * milliseconds));
    return {QDate(1899, 12, 30).addDays(static_cast<qint64>(whole)).startOfDay().addMSecs(time)};
}

// The current row's values.
class Row {
public:
    explicit Row(const File& file) : file_(file), mdb_(file.handle()) {}

    Value value(MdbColumn& column) const {
        if (column.col_type == MDB_BOOL) {
            return {std::int32_t{column.cur_value_len == 0 ? -1 : 0}};
        }
        if (column.cur_value_len == 0) {
            return {};
        }
        const int start = column.cur_value_start;
        switch (column.col_type) {
        case MDB_BYTE:
            return {std::int32_t{mdb_get_byte(mdb_->pg_buf, start)}};
        case MDB_INT:
            return {std::int32_t{static_cast<std::int16_t>(mdb_get_int16(mdb_->pg_buf, start))}};
        case MDB_LONGINT:
            return {static_cast<std::int32_t>(mdb_get_int32(mdb_->pg_buf, start))};
        case MDB_FLOAT:
            return {double{mdb_get_single(mdb_->pg_buf, start)}};
        case MDB_DOUBLE:
            return {mdb_get_double(mdb_->pg_buf, start)};
        case MDB_DATETIME:
            return momentOf(mdb_get_double(mdb_->pg_buf, start));
        case MDB_MONEY:
            return {text(column).toDouble()};
        case MDB_MEMO:
            return {memo(column)};
        case MDB_TEXT:
        case MDB_REPID:
            return {text(column)};
        default:
            return {};
        }
    }

private:
    QString text(const MdbColumn& column) const {
        char* read = mdb_col_to_string(mdb_, mdb_->pg_buf, column.cur_value_start, column.col_type,
                                       column.cur_value_len);
        QString text = file_.textOf(read != nullptr ? read : "");
        g_free(read);
        return text;
    }

    // libmdb takes a memo whose page is no use for an empty one.
    QString memo(const MdbColumn& column) const {
        const auto length =
            static_cast<std::uint32_t>(mdb_get_int32(mdb_->pg_buf, column.cur_value_start));
        QString memo = text(column);
        const bool inRow = (length & memoInline) != 0;
        const bool told =
            inRow ? column.cur_value_len > memoHeader : (length & memoLengthMask) != 0;
        if (column.cur_value_len < memoHeader || (told && memo.isEmpty()) ||
            (length & memoLengthMask) >= longestText) {
            failDamaged();
        }
        return memo;
    }

    const File& file_;
    MdbHandle* mdb_;
};

LegacyTable rowsOf(const File& file, MdbCatalogEntry* entry) {
    MdbTableDef* definition = mdb_read_table(entry);
    if (definition == nullptr || mdb_read_columns(definition) == nullptr) {
        failDamaged();
    }
    LegacyTable table;
    table.Name = file.textOf(entry->object_name);
    std::vector<MdbColumn*> columns;
    for (unsigned i = 0; i < definition->num_cols; ++i) {
        columns.push_back(at<MdbColumn>(definition->columns, i));
        Field field;
        field.Name = file.textOf(columns.back()->name);
        field.Type = typeOf(*columns.back());
        table.Fields.push_back(field);
    }
    const Row row(file);
    mdb_rewind_table(definition);
    while (mdb_fetch_row(definition) != 0) {
        std::vector<Value> values;
        values.reserve(columns.size());
        for (MdbColumn* column : columns) {
            values.push_back(row.value(*column));
        }
        table.Rows.push_back(std::move(values));
    }
    // A row that libmdb could not make out is passed over without a word.
    if (table.Rows.size() != definition->num_rows) {
        failDamaged();
    }
    mdb_free_tabledef(definition);
    return table;
}

} // namespace

QStringList readTableNames(const QString& path) {
    const File file(path);
    QStringList names;
    for (const MdbCatalogEntry* entry : file.userTables()) {
        names << file.textOf(entry->object_name);
    }
    return names;
}

LegacyTable readTable(const QString& path, const QString& name) {
    const File file(path);
    for (MdbCatalogEntry* entry : file.userTables()) {
        if (file.textOf(entry->object_name) == name) {
            return rowsOf(file, entry);
        }
    }
    failDamaged();
}

} // namespace qvnd::jet::legacy
