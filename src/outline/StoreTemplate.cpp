#include "outline/StoreTemplate.h"

#include "outline/LibraryTree.h"
#include "outline/OutlineKeys.h"
#include "outline/OutlinePaths.h"
#include "outline/QueryText.h"
#include "platform/desktop/MessageBoxes.h"
#include "platform/error/IgnoringErrors.h"
#include "platform/files/Paths.h"
#include "platform/jet/TransactionScope.h"
#include "store/Names.h"
#include "store/OutlineFolders.h"
#include "store/PlanLists.h"

namespace qvnd::outline {

namespace {

void copyTable(modMain& state, const QString& name) {
    state.gDbUser->Execute("Select * into " + bareName(name) + " in '" +
                           store::templateLibraryPath(state) + "' from " + name);
}

void makeDatabase(modMain& state, const QString& folder, const QString& name) {
    const QString file = store::databaseIn(folder, name);
    const auto database = state.gWs->CreateDatabase(file, QString::fromUtf16(jet::dbLangGeneral));
    state.gDbUser->Execute("Select * into [" + name + "] in '" + file + "' from [" + name + "]");
    database->Close();
}

void copyDocuments(modMain& state, const QString& plan, jet::Recordset& documents,
                   const QString& folder) {
    const files::NameScope names(*state.gFso);
    for (; !documents.Eof(); documents.MoveNext()) {
        const QString key = documents.Get(store::field::key).ToText();
        if (!isKeyOf(plan, key)) {
            continue; // it names no file
        }
        ignoringError(error::fileNotFound, [&] {
            state.gFso->CopyFile(documentPath(state, plan, key),
                                 folder + files::separator() + key + ".doc", true);
        });
    }
}

// A folder that bears the template's name and a database is adopted at the next start: it must not
// bear the name before all is in it. After a failure it has what had come by then.
void makeFolder(modMain& state, const QString& name, jet::Recordset& documents) {
    const QString folder = store::templateFolder(state, name);
    const QString unfinished = store::templateFolder(state, QStringLiteral(".~stored"));
    if (state.gFso->FolderExists(unfinished)) {
        state.gFso->DeleteFolder(unfinished, true); // left by a killed process
    }
    state.gFso->CreateFolder(unfinished);
    try {
        makeDatabase(state, unfinished, name);
        copyDocuments(state, name, documents, unfinished);
    } catch (const RunTimeError&) {
        state.gFso->MoveFolder(unfinished, folder);
        throw;
    }
    state.gFso->MoveFolder(unfinished, folder);
}

void fillFolder(modMain& state, const QString& name, jet::Recordset& documents) {
    const QString folder = store::templateFolder(state, name);
    if (state.gFso->FolderExists(folder)) {
        copyDocuments(state, name, documents, folder);
    } else {
        makeFolder(state, name, documents);
    }
}

// The folder is filled before the table and the row are committed together.
void storePlan(modMain& state, const QString& plan) {
    jet::TransactionScope changes(*state.gWs);
    copyTable(state, plan);
    const auto documents =
        state.gDbUser->OpenRecordset("Select * from " + plan + " where 是否文档='是'");
    fillFolder(state, plan, *documents);
    store::enlist(*state.gDbTemplate, plan);
    changes.commit();
}

} // namespace

StoreOutcome mnuSaveTemplate(modMain& state, Workbench& workbench, const Services& services) {
    QString plan;
    try {
        plan = store::openCurrentPlan(*state.gDbUser)->Get(store::field::name).TextOrEmpty();
        storePlan(state, plan);
        refreshTemplates(state, workbench, services.messages, services.splash);
        return {Stored::stored, plan, {}};
    } catch (const RunTimeError& failure) {
        if (failure.number() == error::tableExists) {
            services.messages.tell("标书模板中已存在 [ " + plan + " ] ！",
                                   desktop::Icon::information, QStringLiteral("提示"));
            return {Stored::alreadyThere, plan, {}};
        }
        return {Stored::failed, plan, desktop::descriptionOf(failure)};
    }
}

} // namespace qvnd::outline
