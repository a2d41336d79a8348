#pragma once

#include "store/OutlineFolders.h"
#include "store/PlanTables.h"
#include "support/Planner.h"

namespace qvnd::test {

// Plans and templates that no command is about: what they are is taken down before, and looked at
// again after.
class Bystanders {
public:
    // Starts the program, and makes a plan and a template of each name: a folder 1 and a document
    // 2, whose file's text is its key.
    Bystanders(Planner& planner, const QStringList& names) : planner_(planner), names_(names) {
        planner_.start();
        for (const QString& name : names_) {
            planner_.newPlan(name);
            add(name, {{name + ".1", "章 " + name}, {name + ".2", "文 " + name, "是"}});
            addTemplate(name);
        }
        planner_.restart();
        before_ = now();
    }

    struct AreThere {};
    // Starts the program on a copy of a work space that has them.
    Bystanders(Planner& planner, const QStringList& names, AreThere /*tag*/)
        : planner_(planner), names_(names) {
        planner_.start();
        before_ = now();
    }

    // Adds rows to a plan's outline in both databases, with a file for each document.
    void add(const QString& plan, const std::vector<OutlineRowText>& rows) {
        modMain& state = planner_.state();
        const auto own = state.gWs->OpenDatabase(store::planDatabasePath(state, plan));
        for (jet::Database* db : {state.gDbUser.get(), own.get()}) {
            const auto rs = db->OpenRecordset("Select * from [" + plan + "]");
            for (const OutlineRowText& row : rows) {
                OutlineWorld::add(*rs, row);
            }
        }
        for (const OutlineRowText& row : rows) {
            if (row.isDocument == "是") {
                planner_.folder.write("Sys/用户模板/" + plan + "/" + row.key + ".doc",
                                      row.key.toUtf8());
            }
        }
    }

    // False when no table or no folder can bear the name, or a table does already.
    bool addTemplate(const QString& name) {
        modMain& state = planner_.state();
        const QString folder = state.gSysPath + "标书模板" + files::separator() + name;
        const std::vector<OutlineRowText> rows = {
            {name, name}, {name + ".1", "章 " + name}, {name + ".2", "文 " + name, "是"}};
        try {
            OutlineWorld::makeTable(*state.gDbTemplate, name, rows);
            state.gFso->CreateFolder(folder);
        } catch (const RunTimeError&) {
            return false;
        }
        const auto own = state.gWs->CreateDatabase(folder + files::separator() + name + ".mdb",
                                                   QString::fromUtf16(jet::dbLangGeneral));
        OutlineWorld::makeTable(*own, name, rows);
        planner_.folder.write("Sys/标书模板/" + name + "/" + name + ".2.doc", name.toUtf8());
        const auto list = state.gDbTemplate->OpenRecordset("Select * from 遍历表");
        list->AddNew();
        list->Set(u"名称", name);
        list->Update();
        return true;
    }

    // A plan whose name no dialog looked at, and which is the current one: root row, information,
    // folder and database.
    void addOldPlan(const QString& name) {
        modMain& state = planner_.state();
        state.gFso->CreateFolder(state.gUserTplPath + name);
        const auto own = state.gWs->CreateDatabase(store::planDatabasePath(state, name),
                                                   QString::fromUtf16(jet::dbLangGeneral));
        for (jet::Database* db : {state.gDbUser.get(), own.get()}) {
            OutlineWorld::makeTable(*db, name, {{name, name}});
            db->TableDefs().Append(store::informationTable(name));
            const auto information = db->OpenRecordset("Select * from [" + name + "Org]");
            information->AddNew();
            information->Update();
        }
        makeCurrent(name);
    }

    // All their rows, in the central databases and in those of their folders, and their files.
    QStringList now() {
        modMain& state = planner_.state();
        QStringList found;
        for (const QString& name : names_) {
            found << rows("plan", *state.gDbUser, name) << rows("org", *state.gDbUser, name + "Org")
                  << rows("template", *state.gDbTemplate, name)
                  << copied(state.gUserTplPath + name, name)
                  << copied(state.gSysPath + "标书模板" + files::separator() + name, name)
                  << fileTexts("Sys/用户模板/" + name) << fileTexts("Sys/标书模板/" + name);
        }
        return found << listed(*state.gDbUser) << listed(*state.gDbTemplate);
    }
    const QStringList& before() const { return before_; }

private:
    void makeCurrent(const QString& name) {
        for (const char* table : {"遍历表", "当前表"}) {
            const auto list =
                planner_.state().gDbUser->OpenRecordset(QString("Select * from %1").arg(table));
            if (QString(table) == "当前表" && !list->Eof()) {
                list->Delete();
            }
            list->AddNew();
            list->Set(u"名称", name);
            list->Update();
        }
    }
    static QStringList rows(const QString& label, jet::Database& db, const QString& table) {
        QStringList found;
        try {
            const auto rs = db.OpenRecordset("Select * from [" + table + "]");
            for (; !rs->Eof(); rs->MoveNext()) {
                QStringList fields{label};
                for (const jet::Field& field : rs->Fields()) {
                    fields << rs->Get(field.Name).TextOrEmpty();
                }
                found << fields.join('|');
            }
        } catch (const RunTimeError& failure) {
            found << label + " " + table + ": " + QString::fromStdU16String(failure.description());
        }
        return found;
    }
    QStringList copied(const QString& folder, const QString& name) {
        try {
            const auto own =
                planner_.state().gWs->OpenDatabase(folder + files::separator() + name + ".mdb");
            return rows("copy", *own, name);
        } catch (const RunTimeError& failure) {
            return {QString::fromStdU16String(failure.description())};
        }
    }
    QStringList fileTexts(const QString& folder) const {
        QStringList found;
        for (const QString& file : planner_.folder.names(folder)) {
            found << file + "=" +
                         (file.endsWith(".doc")
                              ? QString::fromUtf8(planner_.folder.read(folder + "/" + file))
                              : QString("database"));
        }
        return found;
    }
    // Those of them that are on a database's list.
    QStringList listed(jet::Database& db) {
        QStringList found;
        for (const auto rs = db.OpenRecordset("Select * from 遍历表"); !rs->Eof(); rs->MoveNext()) {
            const QString name = rs->Get(u"名称").TextOrEmpty();
            if (names_.contains(name)) {
                found << "listed " + name;
            }
        }
        return found;
    }

    Planner& planner_;
    QStringList names_;
    QStringList before_;
};

} // namespace qvnd::test
