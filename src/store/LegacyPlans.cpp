#include "store/LegacyPlans.h"

#include "platform/error/IgnoringErrors.h"
#include "platform/error/RunTimeError.h"
#include "platform/files/FileErrors.h"
#include "platform/files/Paths.h"
#include "platform/files/SafeReplace.h"
#include "store/LegacyOutline.h"
#include "store/Names.h"
#include "store/PlanTables.h"

#include <QFile>

#include <algorithm>
#include <system_error>

namespace qvnd::store {

namespace {

using jet::Value;

// A table beside the outline while the rows come in.
QString stagingFor(const QString& name) {
    const QString usual = table::scratch.toString();
    return name.compare(usual, Qt::CaseInsensitive) == 0 ? usual + '2' : usual;
}

// Indexes that the rows do not allow are left out, as in tables that come in by a copy.
jet::TableDef outlineFor(const QString& name, const LegacyOutline& outline) {
    jet::TableDef table = outlineTable(name);
    if (!outline.KeysDiffer) {
        table.Indexes.erase(table.Indexes.begin());
    }
    return table;
}

// The IDs come in through a table whose ID is a plain number: those of the outline are the
// engine's own, and only a copy from another table may bring them along.
void writeOutline(jet::Database& database, const QString& name, const LegacyOutline& outline) {
    const QString staging = stagingFor(name);
    jet::TableDef plain = outlineTable(staging);
    plain.Indexes.clear();
    for (jet::Field& field : plain.Fields) {
        field.Attributes = 0;
    }
    database.TableDefs().Append(plain);
    {
        const auto rows = database.OpenRecordset(staging, jet::OpenAs::Table);
        for (const LegacyRow& row : outline.Rows) {
            rows->AddNew();
            rows->Set(field::name, row.Name);
            rows->Set(field::key, row.Key);
            rows->Set(field::id, Value(row.Id));
            rows->Set(field::isDocument, row.IsDocument);
            rows->Update();
        }
    }
    database.TableDefs().Append(outlineFor(name, outline));
    database.Execute("INSERT INTO [" + name + "] SELECT * FROM [" + staging + "] ORDER BY ID");
    database.Execute("DROP TABLE [" + staging + "]");
}

// Nothing that the old table held is too long for the new one.
jet::TableDef informationFor(const QString& name, const std::vector<Value>& values) {
    jet::TableDef table = informationTable(name);
    for (std::size_t i = 0; i < table.Fields.size(); ++i) {
        jet::Field& field = table.Fields[i];
        const auto length = static_cast<int>(values[i].TextOrEmpty().size());
        if (field.Type == jet::FieldType::Text && length > jet::defaultTextSize) {
            field.Type = jet::FieldType::Memo;
            field.Size = 0;
        } else if (field.Type == jet::FieldType::Text) {
            field.Size = std::max(field.Size, length);
        }
    }
    return table;
}

void writeInformation(jet::Database& database, const QString& name,
                      const std::vector<Value>& values) {
    const jet::TableDef table = informationFor(name, values);
    database.TableDefs().Append(table);
    const auto row = database.OpenRecordset(table.Name, jet::OpenAs::Table);
    row->AddNew();
    for (std::size_t i = 0; i < table.Fields.size(); ++i) {
        if (!values[i].IsNull()) {
            // A date that was kept as some text may be none.
            ignoringErrors([&] { row->Set(table.Fields[i].Name, values[i]); });
        }
    }
    row->Update();
}

QByteArray contentsOf(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        files::throwFileError(error::permissionDenied, path);
    }
    return file.readAll();
}

// A path that is free, or holds this very file from a run that was killed.
QString keepingPath(const QString& file) {
    const QByteArray contents = contentsOf(file);
    const QString first = file + ".jet";
    QString path = first;
    for (int number = 2; QFile::exists(path) && contentsOf(path) != contents; ++number) {
        path = first + '.' + QString::number(number);
    }
    return path;
}

// A database under work beside the file; gone with the object unless it took the file's place.
class Unfinished {
public:
    explicit Unfinished(const QString& file) : file_(file), path_(file + ".import") { clear(); }
    ~Unfinished() { clear(); }
    Unfinished(const Unfinished&) = delete;
    Unfinished& operator=(const Unfinished&) = delete;

    const QString& path() const { return path_; }
    void takeThePlace() const {
        std::error_code failure;
        std::filesystem::rename(files::toPath(path_), files::toPath(file_), failure);
        if (failure) {
            files::throwFileError(failure, file_);
        }
    }

private:
    void clear() const {
        for (const char* suffix : {"", "-journal", ".new", ".new-journal"}) {
            QFile::remove(path_ + suffix);
        }
    }

    QString file_;
    QString path_;
};

} // namespace

LegacyTakeover takeOverLegacyFile(modMain& state, const QString& file, const QString& name,
                                  bool withInformation) {
    const auto old = state.gLegacyReader->Open(file);
    const LegacyOutline outline = legacyOutline(*old, name, file);
    const auto information = withInformation ? legacyInformation(*old, name) : std::nullopt;
    const Unfinished unfinished(file);
    const auto database =
        state.gWs->CreateDatabase(unfinished.path(), QString::fromUtf16(jet::dbLangGeneral));
    writeOutline(*database, name, outline);
    if (information) {
        writeInformation(*database, name, *information);
    }
    database->Close();
    const QString kept = keepingPath(file);
    if (!QFile::exists(kept)) {
        files::copyWhole(file, kept);
    }
    unfinished.takeThePlace();
    return {
        name, withInformation, static_cast<int>(outline.Rows.size()), information.has_value(), kept,
        {}};
}

bool adoptLegacyFile(modMain& state, const QString& file, const QString& name,
                     bool withInformation) {
    if (state.gLegacyReader == nullptr || !state.gLegacyReader->Recognizes(file)) {
        return true;
    }
    // A second attempt counts alone.
    std::erase_if(state.LegacyTakeovers, [&](const LegacyTakeover& earlier) {
        return earlier.Name == name && earlier.IsPlan == withInformation;
    });
    try {
        state.LegacyTakeovers.push_back(takeOverLegacyFile(state, file, name, withInformation));
        return true;
    } catch (const RunTimeError& failure) {
        state.LegacyTakeovers.push_back({name,
                                         withInformation,
                                         0,
                                         false,
                                         {},
                                         QString::fromStdU16String(failure.description())});
        return false;
    }
}

} // namespace qvnd::store
