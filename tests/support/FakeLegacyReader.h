#pragma once

#include "platform/error/RunTimeError.h"
#include "platform/jet/legacy/LegacyDatabase.h"

#include <QFile>

#include <map>

namespace qvnd::test {

// Databases of older installations as a test makes them up: a file that begins with "JET:name" is
// the database put under that name; "JET busy" cannot be read this time; one that begins with "JET"
// otherwise is damaged.
class FakeLegacyReader : public jet::legacy::LegacyReader {
public:
    using Tables = std::vector<jet::legacy::LegacyTable>;

    explicit FakeLegacyReader(const std::map<QString, Tables>& files) : files_(files) {}

    bool Recognizes(const QString& path) const override {
        return contentsOf(path).startsWith("JET");
    }
    std::unique_ptr<jet::legacy::LegacyDatabase> Open(const QString& path) const override {
        const QString content = contentsOf(path);
        if (content == "JET busy") {
            throw RunTimeError(error::cannotAccessFile, u"没能读完");
        }
        const auto found = files_.find(content.mid(4));
        if (found == files_.end()) {
            throw RunTimeError(error::unrecognizedFormat, (path + "已损坏").toStdU16String());
        }
        return std::make_unique<Made>(found->second);
    }

    // An outline table; each row is 名称, Key, ID, 是否文档 (fewer fields: fewer values).
    static jet::legacy::LegacyTable table(const QString& name, const QStringList& fields,
                                          const std::vector<std::vector<jet::Value>>& rows) {
        jet::legacy::LegacyTable table;
        table.Name = name;
        for (const QString& field : fields) {
            table.Fields.push_back(jet::TableDef::CreateField(field, jet::FieldType::Memo));
        }
        table.Rows = rows;
        return table;
    }

private:
    class Made : public jet::legacy::LegacyDatabase {
    public:
        explicit Made(Tables tables) : tables_(std::move(tables)) {}
        QStringList TableNames() const override {
            QStringList names;
            for (const auto& table : tables_) {
                names << table.Name;
            }
            return names;
        }
        jet::legacy::LegacyTable Table(const QString& name) const override {
            for (const auto& table : tables_) {
                if (table.Name.compare(name, Qt::CaseInsensitive) == 0) {
                    return table;
                }
            }
            throw RunTimeError(error::tableNotFound, u"none");
        }

    private:
        Tables tables_;
    };

    static QString contentsOf(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }

    const std::map<QString, Tables>& files_;
};

} // namespace qvnd::test
