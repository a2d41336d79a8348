#pragma once

#include "platform/files/TextDecoding.h"
#include "platform/jet/legacy/LegacyDatabase.h"

#include <QByteArray>
#include <QDateTime>
#include <QtEndian>

#include <cstdint>
#include <cstring>
#include <vector>

namespace qvnd::test {

// The bytes of a genuine version 3 file, as DAO 3.5 made them: pages of 2,048 bytes, numbers with
// their low byte first, texts in GBK bytes under the Western code page.
//
//   page 0   the engine's name, the version, and settings under a fixed RC4 key
//   page 1   an empty data page
//   page 2   the definition of MSysObjects, which lists the tables
//
// Each table has a page with its definition, a page with the maps of its used and of its free
// pages, and data pages, which are filled with rows from their end. Fields of a fixed length lie in
// front of a row, texts behind them, their places and a bit for each field that is not Null at its
// end. A row takes 255 bytes at most. There are no indexes; a reader does without.
class GenuineJet {
public:
    using Table = jet::legacy::LegacyTable;

    // What a catalogue lists besides the user's tables: queries, and tables of the system.
    struct Other {
        QString Name;
        std::int32_t Type = 0;
        std::int32_t Flags = 0;
    };

    explicit GenuineJet(const std::vector<Table>& tables, const std::vector<Other>& others = {}) {
        pages_ << header() << dataPage({}, 0) << QByteArray();
        std::vector<Table> objects{catalogue()};
        for (const Table& table : tables) {
            const auto page = static_cast<std::int32_t>(pages_.size());
            pages_ << QByteArray();
            lay(table, page, userTable);
            objects[0].Rows.push_back({jet::Value(page), jet::Value(table.Name),
                                       jet::Value(std::int32_t{1}), jet::Value(std::int32_t{0}),
                                       jet::Value()});
        }
        for (const Other& other : others) {
            objects[0].Rows.push_back({jet::Value(std::int32_t{2}), jet::Value(other.Name),
                                       jet::Value(other.Type), jet::Value(other.Flags),
                                       jet::Value()});
        }
        lay(objects[0], 2, systemTable);
    }

    QByteArray bytes() const { return pages_.join(); }

private:
    static constexpr qsizetype pageSize = 2048;
    static constexpr char userTable = 0x4E;
    static constexpr char systemTable = 0x53;
    static constexpr qsizetype mapSize = 128; // bytes, a bit for each page of the file
    static constexpr quint32 inRow = 0x80000000;

    enum Type : char { integer = 4, single = 6, number = 7, moment = 8, text = 10, memo = 12 };

    template <class Number>
    static void put(QByteArray& page, qsizetype at, Number value) {
        const Number little = qToLittleEndian(value);
        std::memcpy(page.data() + at, &little, sizeof little);
    }
    template <class Number>
    static QByteArray raw(Number value) {
        QByteArray bytes(sizeof value, '\0');
        put(bytes, 0, value);
        return bytes;
    }

    static QByteArray rc4(const QByteArray& key, QByteArray bytes) {
        quint8 state[256];
        for (int i = 0; i < 256; ++i) {
            state[i] = static_cast<quint8>(i);
        }
        for (int i = 0, j = 0; i < 256; ++i) {
            j = (j + state[i] + static_cast<quint8>(key[i % key.size()])) & 255;
            std::swap(state[i], state[j]);
        }
        int i = 0;
        int j = 0;
        for (char& byte : bytes) {
            i = (i + 1) & 255;
            j = (j + state[i]) & 255;
            std::swap(state[i], state[j]);
            byte = static_cast<char>(byte ^ state[(state[i] + state[j]) & 255]);
        }
        return bytes;
    }

    static QByteArray header() {
        constexpr qsizetype settingsAt = 0x18;
        constexpr qsizetype settingsLength = 126;
        QByteArray page(pageSize, '\0');
        page.replace(0, 20, QByteArray("\0\1\0\0Standard Jet DB\0", 20));
        QByteArray settings(settingsLength, '\0');
        put(settings, 0x3A - settingsAt, quint16{0x0409});
        put(settings, 0x3C - settingsAt, quint16{1252});
        return page.replace(settingsAt, settingsLength, rc4("\xC7\xDA\x39\x6B", settings));
    }

    static Table catalogue() {
        using jet::FieldType;
        using jet::TableDef;
        Table table;
        table.Name = "MSysObjects";
        table.Fields = {TableDef::CreateField("Id", FieldType::Long),
                        TableDef::CreateField("Name", FieldType::Text),
                        TableDef::CreateField("Type", FieldType::Long),
                        TableDef::CreateField("Flags", FieldType::Long),
                        TableDef::CreateField("LvProp", FieldType::Memo)};
        return table;
    }

    static Type typeOf(const jet::Field& field) {
        switch (field.Type) {
        case jet::FieldType::Single:
            return single;
        case jet::FieldType::Double:
            return number;
        case jet::FieldType::Date:
            return moment;
        case jet::FieldType::Text:
            return text;
        case jet::FieldType::Memo:
            return memo;
        default:
            return integer;
        }
    }
    static bool isFixed(const jet::Field& field) { return typeOf(field) < text; }
    static quint16 lengthOf(const jet::Field& field) {
        const Type type = typeOf(field);
        return type == integer || type == single ? 4 : type < text ? 8 : type == text ? 255 : 0;
    }

    static QByteArray fixedBytes(const jet::Field& field, const jet::Value& value) {
        if (value.IsNull()) {
            return QByteArray(lengthOf(field), '\0');
        }
        switch (typeOf(field)) {
        case single:
            return raw(static_cast<float>(value.ToDouble()));
        case number:
            return raw(value.ToDouble());
        case moment:
            return raw(static_cast<double>(QDate(1899, 12, 30).daysTo(value.ToDate().date())));
        default:
            return raw(static_cast<qint32>(value.ToDouble()));
        }
    }
    static QByteArray textBytes(const jet::Field& field, const jet::Value& value) {
        const QByteArray gbk = files::encodeGbk(value.TextOrEmpty());
        const bool needsLength = typeOf(field) == memo && !value.IsNull();
        return needsLength
                   ? raw(inRow | static_cast<quint32>(gbk.size())) + QByteArray(8, '\0') + gbk
                   : gbk;
    }

    static QByteArray row(const Table& table, const std::vector<jet::Value>& values) {
        const auto count = static_cast<int>(table.Fields.size());
        QByteArray bytes(1, static_cast<char>(count));
        QByteArray texts;
        QByteArray places;
        QByteArray present((count + 7) / 8, '\0');
        for (int i = 0; i < count; ++i) {
            const auto& value = values[static_cast<std::size_t>(i)];
            if (!value.IsNull()) {
                present[i / 8] = static_cast<char>(present[i / 8] | (1 << (i % 8)));
            }
            if (isFixed(table.Fields[static_cast<std::size_t>(i)])) {
                bytes += fixedBytes(table.Fields[static_cast<std::size_t>(i)], value);
            }
        }
        for (int i = 0; i < count; ++i) {
            const auto& field = table.Fields[static_cast<std::size_t>(i)];
            if (!isFixed(field)) {
                places.prepend(static_cast<char>(bytes.size() + texts.size()));
                texts += textBytes(field, values[static_cast<std::size_t>(i)]);
            }
        }
        const auto textCount = static_cast<char>(places.size());
        places.prepend(static_cast<char>(bytes.size() + texts.size()));
        bytes += texts + places + QByteArray(1, textCount) + present;
        if (bytes.size() > 255) {
            qFatal("a row of %lld bytes", static_cast<long long>(bytes.size()));
        }
        return bytes;
    }

    static QByteArray dataPage(const QByteArrayList& rows, qint32 owner) {
        QByteArray page(pageSize, '\0');
        page[0] = 1;
        page[1] = 1;
        put(page, 4, owner);
        put(page, 8, static_cast<quint16>(rows.size()));
        qsizetype end = pageSize;
        for (qsizetype i = 0; i < rows.size(); ++i) {
            end -= rows[i].size();
            page.replace(end, rows[i].size(), rows[i]);
            put(page, 10 + 2 * i, static_cast<quint16>(end));
        }
        put(page, 2, static_cast<quint16>(end - 10 - 2 * rows.size()));
        return page;
    }

    // Appends the data pages and the page of the maps, and answers where the maps are.
    qint32 layRows(const Table& table, qint32 definition) {
        QByteArray used(5 + mapSize, '\0');
        QByteArrayList rows;
        qsizetype room = pageSize - 10;
        const auto flush = [&] {
            const qsizetype page = pages_.size();
            used[5 + page / 8] = static_cast<char>(used[5 + page / 8] | (1 << (page % 8)));
            pages_ << dataPage(rows, definition);
            rows.clear();
            room = pageSize - 10;
        };
        for (const auto& values : table.Rows) {
            const QByteArray next = row(table, values);
            if (next.size() + 2 > room) {
                flush();
            }
            rows << next;
            room -= next.size() + 2;
        }
        flush();
        pages_ << dataPage({used, QByteArray(5 + mapSize, '\0')}, definition);
        return static_cast<qint32>(pages_.size() - 1);
    }

    void lay(const Table& table, qint32 at, char kind) {
        const qint32 maps = layRows(table, at);
        QByteArray page(pageSize, '\0');
        page[0] = 2;
        page[1] = 1;
        page[20] = kind;
        const auto count = static_cast<quint16>(table.Fields.size());
        put(page, 12, static_cast<quint32>(table.Rows.size()));
        put(page, 21, count);
        put(page, 25, count);
        put(page, 35, qint32{maps << 8});
        put(page, 39, qint32{maps << 8 | 1});
        qsizetype end = 43;
        quint16 texts = 0;
        quint16 fixed = 0;
        QByteArray names;
        for (quint16 i = 0; i < count; ++i, end += 18) {
            const jet::Field& field = table.Fields[i];
            page[end] = typeOf(field);
            put(page, end + 1, i);
            put(page, end + 3, texts);
            put(page, end + 5, i);
            page[end + 13] = static_cast<char>(isFixed(field) ? 3 : 2);
            put(page, end + 14, fixed);
            put(page, end + 16, lengthOf(field));
            (isFixed(field) ? fixed : texts) += isFixed(field) ? lengthOf(field) : 1;
            const QByteArray name = files::encodeGbk(field.Name);
            names += QByteArray(1, static_cast<char>(name.size())) + name;
        }
        put(page, 23, texts);
        page.replace(end, names.size(), names);
        put(page, 8, static_cast<quint32>(end + names.size()));
        pages_[at] = page;
    }

    QByteArrayList pages_;
};

} // namespace qvnd::test
