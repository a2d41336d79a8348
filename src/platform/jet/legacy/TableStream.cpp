#include "platform/jet/legacy/TableStream.h"

#include <QDataStream>
#include <QDateTime>
#include <QIODevice>
#include <QStringList>

namespace qvnd::jet::legacy {

namespace {

enum class Kind : quint8 { null, text, whole, fraction, moment };

void write(QDataStream& out, const Value& value) {
    if (value.IsNull()) {
        out << Kind::null;
    } else if (value.IsText()) {
        out << Kind::text << value.ToText();
    } else if (value.IsDate()) {
        out << Kind::moment << value.ToDate();
    } else if (value == Value(value.ToDouble())) {
        out << Kind::fraction << value.ToDouble();
    } else {
        out << Kind::whole << qint32{value.ToLong()};
    }
}

Value readValue(QDataStream& in) {
    Kind kind = Kind::null;
    in >> kind;
    if (kind == Kind::text) {
        QString text;
        in >> text;
        return {text};
    }
    if (kind == Kind::whole) {
        qint32 number = 0;
        in >> number;
        return {std::int32_t{number}};
    }
    if (kind == Kind::fraction) {
        double number = 0;
        in >> number;
        return {number};
    }
    if (kind == Kind::moment) {
        QDateTime moment;
        in >> moment;
        return {moment};
    }
    if (kind != Kind::null) {
        in.setStatus(QDataStream::ReadCorruptData);
    }
    return {};
}

// Whether so many fields and rows can stand in so many bytes, so that no stray count asks for
// memory: a field takes the lengths of its name and its type at least, a value one byte.
bool canHold(const QByteArray& bytes, quint64 fields, quint64 rows) {
    const auto size = static_cast<quint64>(bytes.size());
    return fields <= size / (sizeof(quint32) + sizeof(qint32)) &&
           (rows == 0 || (fields > 0 && rows <= size / fields));
}

bool isWhole(const QDataStream& in) { return in.status() == QDataStream::Ok && in.atEnd(); }

} // namespace

QByteArray bytesOf(const QStringList& names) {
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out << names;
    return bytes;
}

std::optional<QStringList> namesIn(const QByteArray& bytes) {
    QDataStream in(bytes);
    quint32 count = 0;
    in >> count;
    // Each name takes the four bytes of its length at least, so no stray count asks for memory.
    if (count > static_cast<quint64>(bytes.size()) / sizeof(quint32)) {
        return std::nullopt;
    }
    QStringList names;
    for (quint32 i = 0; i < count && in.status() == QDataStream::Ok; ++i) {
        QString name;
        in >> name;
        names << name;
    }
    return isWhole(in) ? std::optional(names) : std::nullopt;
}

QByteArray bytesOf(const LegacyTable& table) {
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out << table.Name << static_cast<quint32>(table.Fields.size())
        << static_cast<quint32>(table.Rows.size());
    for (const Field& field : table.Fields) {
        out << field.Name << static_cast<qint32>(field.Type);
    }
    for (const auto& row : table.Rows) {
        for (const Value& value : row) {
            write(out, value);
        }
    }
    return bytes;
}

std::optional<LegacyTable> tableIn(const QByteArray& bytes) {
    QDataStream in(bytes);
    LegacyTable table;
    quint32 fields = 0;
    quint32 rows = 0;
    in >> table.Name >> fields >> rows;
    if (!canHold(bytes, fields, rows)) {
        return std::nullopt;
    }
    for (quint32 i = 0; i < fields && in.status() == QDataStream::Ok; ++i) {
        Field field;
        qint32 type = 0;
        in >> field.Name >> type;
        field.Type = static_cast<FieldType>(type);
        table.Fields.push_back(field);
    }
    for (quint32 i = 0; i < rows && in.status() == QDataStream::Ok; ++i) {
        std::vector<Value> row;
        for (quint32 k = 0; k < fields && in.status() == QDataStream::Ok; ++k) {
            row.push_back(readValue(in));
        }
        table.Rows.push_back(std::move(row));
    }
    return isWhole(in) ? std::optional(table) : std::nullopt;
}

} // namespace qvnd::jet::legacy
