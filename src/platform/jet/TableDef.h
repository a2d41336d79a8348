#pragma once

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace qvnd::jet {

// The engine's own type numbers, frozen: they stand in the files.
enum class FieldType : int {
    Byte = 2,
    Integer = 3, // 16 bits
    Long = 4,    // 32 bits
    Single = 6,
    Double = 7,
    Date = 8,
    Text = 10, // at most 255 characters
    Memo = 12, // text of any length
};

// Bit of Field::Attributes: the engine numbers the rows, rising, and never gives a number again.
inline constexpr int dbAutoIncrField = 16;

// Size of a Text field that names none, in characters.
inline constexpr int defaultTextSize = 255;

// The definition of a field.
struct Field {
    QString Name;
    FieldType Type = FieldType::Text;
    int Size = 0; // characters of a Text field; 0 elsewhere
    int Attributes = 0;
    bool AllowZeroLength = false; // else an empty text is refused with error 3315
    std::optional<QString>
        DefaultValue; // what a new row takes when the field is not set; else Null

    bool IsAutoIncrement() const { return (Attributes & dbAutoIncrField) != 0; }
    bool IsText() const { return Type == FieldType::Text || Type == FieldType::Memo; }

    friend bool operator==(const Field&, const Field&) = default;
};

// The definition of an index. A primary index is unique as well.
struct Index {
    QString Name;
    bool Primary = false;
    bool Unique = false;
    QStringList Fields;

    bool IsUnique() const { return Unique || Primary; }

    friend bool operator==(const Index&, const Index&) = default;
};

// The definition of a table: a plain value, filled by the caller and handed to TableDefs::Append,
// or told back by TableDefs. Fields and indexes keep the order in which they were appended.
// Names are compared without case everywhere.
class TableDef {
public:
    TableDef() = default;
    explicit TableDef(QString name) : Name(std::move(name)) {}

    // A field that is not yet part of the table. A Text field without a size gets the default one.
    static Field CreateField(const QString& name, FieldType type, int size = 0);
    static Index CreateIndex(const QString& name, bool primary, bool unique, QStringList fields);

    // Null when there is none of that name.
    const Field* FindField(QStringView name) const;
    // Error 3265 when there is none of that name.
    const Field& FieldNamed(QStringView name) const;

    QString Name;
    std::vector<Field> Fields;
    std::vector<Index> Indexes;

    friend bool operator==(const TableDef&, const TableDef&) = default;
};

} // namespace qvnd::jet
