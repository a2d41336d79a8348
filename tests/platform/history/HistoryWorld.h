#pragma once

#include "platform/error/IgnoringErrors.h"
#include "platform/files/DiskFileSystem.h"
#include "platform/history/History.h"
#include "platform/jet/DBEngine.h"
#include "support/Errors.h"
#include "support/Files.h"
#include "support/PlainSqlite.h"
#include "support/Text.h"

#include <QCryptographicHash>
#include <QDirIterator>
#include <QMap>

#include <memory>

namespace qvnd::test {

// A work space with a central database, plans in folders, and a history of it.
class HistoryWorld {
public:
    // `program` is a program folder besides; empty for none.
    explicit HistoryWorld(const QString& base = {}, const QString& program = {},
                          QString machine = history::Places::thisMachine())
        : owned_(base.isEmpty()), program_(program), machine_(std::move(machine)) {
        base_ = owned_ ? folder_.path() : base;
        open();
    }
    ~HistoryWorld() { close(); }
    HistoryWorld(const HistoryWorld&) = delete;
    HistoryWorld& operator=(const HistoryWorld&) = delete;

    QString path(const QString& name) const { return base_ + "/" + name; }

    void open() {
        engine_ = std::make_unique<jet::DBEngine>();
        files = std::make_unique<files::DiskFileSystem>(std::make_unique<OneOpen>(*this));
        const QStringList others = program_.isEmpty() ? QStringList() : QStringList{program_};
        history = std::make_unique<history::History>(path(".~history"),
                                                     history::Places(base_, others, machine_),
                                                     workspace(), *files, "测试");
        const QString central = path("central.mdb");
        db = QFile::exists(central) ? workspace().OpenDatabase(central) : create("central.mdb");
    }
    void close() {
        db.reset();
        if (engine_) {
            workspace().Close();
        }
        history.reset();
        files.reset();
        engine_.reset();
    }
    // As the next start of the program finds things.
    history::History::Found restart() {
        close();
        open();
        return history->mend();
    }

    jet::Workspace& workspace() { return engine_->Workspaces(0); }
    std::unique_ptr<jet::Database> create(const QString& name) {
        return workspace().CreateDatabase(path(name), QString::fromUtf16(jet::dbLangGeneral));
    }
    static jet::TableDef table(const QString& name) {
        using jet::TableDef;
        TableDef made(name);
        made.Fields = {TableDef::CreateField("名称", jet::FieldType::Memo),
                       TableDef::CreateField("Key", jet::FieldType::Text, 255),
                       TableDef::CreateField("ID", jet::FieldType::Long)};
        made.Fields[2].Attributes = jet::dbAutoIncrField;
        made.Indexes = {TableDef::CreateIndex("PrimaryKey", false, true, {"Key"}),
                        TableDef::CreateIndex("ID", true, true, {"ID"})};
        return made;
    }
    static void addRow(jet::Database& database, const QString& table, const QString& key) {
        const auto rows = database.OpenRecordset("Select * from [" + table + "]");
        rows->AddNew();
        rows->Set(u"Key", key);
        rows->Set(u"名称", "名" + key);
        rows->Update();
    }
    void write(const QString& name, const QByteArray& bytes) const {
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
            qFatal("cannot write %s", qPrintable(name));
        }
    }
    QByteArray read(const QString& name) const {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    using Work = std::function<void()>;
    // A recorded command.
    history::History::Outcome run(const QString& caption, const Work& work,
                                  const QString& selected = {}) {
        history->begin(
            {caption, "甲", selected, "名" + selected, {}, {}, goOnWithout, {}, leaveOut});
        try {
            work();
        } catch (const RunTimeError&) {
            // A command tells its failures itself; what it did before stays.
        }
        return history->finish({});
    }

    // A plan with a folder, two documents, a table in the central database and one in its own.
    void makePlan(const QString& plan) {
        files->CreateFolder(path(plan));
        db->TableDefs().Append(table(plan));
        const auto own = create(plan + "/" + plan + ".mdb");
        own->TableDefs().Append(table(plan));
        for (const char* number : {"1", "2"}) {
            const QString key = plan + "." + number;
            addRow(*db, plan, key);
            addRow(*own, plan, key);
            files->CopyFile(path("source.doc"), path(plan + "/" + key + ".doc"), true);
        }
    }
    void deletePlan(const QString& plan) {
        db->TableDefs().Delete(plan);
        files->DeleteFolder(path(plan), false);
    }

    // All rows, numbers included, and all files but the history's own.
    using State = QMap<QString, QStringList>;
    State state() {
        workspace().Settle();
        State all;
        QDirIterator at(base_, QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot,
                        QDirIterator::Subdirectories);
        while (at.hasNext()) {
            const QString file = at.next();
            const QString name = file.mid(base_.size() + 1);
            all[name] = at.fileInfo().isDir()   ? QStringList{"folder"}
                        : name.endsWith(".mdb") ? databaseIn(file)
                                                : QStringList{digest(read(name))};
        }
        return all;
    }
    // One of another kind, or a damaged one, by its bytes.
    QStringList databaseIn(const QString& file) {
        QStringList rows;
        const bool isSound = ignoringError(error::unrecognizedFormat, [&] { rows = rowsIn(file); });
        return isSound ? rows : QStringList{digest(read(file.mid(base_.size() + 1)))};
    }
    static QString digest(const QByteArray& bytes) {
        return QString::number(bytes.size()) + " " +
               QCryptographicHash::hash(bytes, QCryptographicHash::Sha1).toHex();
    }
    QStringList rowsIn(const QString& file) {
        const auto database = workspace().OpenDatabase(file);
        QStringList rows;
        for (const QString& name : database->TableDefs().Names()) {
            rows << "table " + name;
            const auto rs = database->OpenRecordset("Select * from [" + name + "] order by ID");
            for (; !rs->Eof(); rs->MoveNext()) {
                rows << rs->Get(u"ID").ToText() + "|" + rs->Get(u"Key").TextOrEmpty() + "|" +
                            rs->Get(u"名称").TextOrEmpty();
            }
        }
        return rows;
    }

    // A document that another program has open.
    QString openDocument;
    // What the user answers when a command cannot be recorded; unset for a refusal.
    history::Question goOnWithout;
    // What the user answers when an undo or redo would need files that are out of reach.
    history::Question leaveOut;

    std::unique_ptr<files::DiskFileSystem> files;
    std::unique_ptr<history::History> history;
    std::unique_ptr<jet::Database> db;

private:
    struct OneOpen : files::FilesInUse {
        explicit OneOpen(const HistoryWorld& of) : world(of) {}
        bool isDocumentOpen(const QString& path) override { return path == world.openDocument; }
        bool isAnyOpenIn(const QString&) override { return false; }
        const HistoryWorld& world;
    };

    TemporaryFolder folder_{inMemory()};
    bool owned_;
    QString base_;
    QString program_;
    QString machine_;
    std::unique_ptr<jet::DBEngine> engine_;
};

} // namespace qvnd::test
