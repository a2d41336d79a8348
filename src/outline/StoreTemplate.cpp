#include "outline/StoreTemplate.h"

#include "outline/BareNames.h"
#include "outline/LibraryTree.h"
#include "outline/OutlineRows.h"
#include "outline/TemplateLibrary.h"
#include "platform/error/RunTimeError.h"
#include "platform/jet/LastingTogether.h"

namespace qvnd::outline {

namespace {

QString currentPlan(modMain& state) {
    return state.gDbUser->OpenRecordset(QStringLiteral("Select * from 当前表"))
        ->Get(u"名称")
        .TextOrEmpty();
}

void copyTable(modMain& state, const QString& name) {
    state.gDbUser->Execute("Select * into " + bareName(name) + " in '" +
                           templateLibraryPath(state) + "' from " + name);
}

void makeFolder(modMain& state, const QString& name) {
    const QString folder = templateFolder(state, name);
    if (state.gFso->FolderExists(folder)) {
        return;
    }
    state.gFso->CreateFolder(folder);
    const QString file = templateDatabasePath(state, name);
    const auto database = state.gWs->CreateDatabase(file, QString::fromUtf16(jet::dbLangGeneral));
    state.gDbUser->Execute("Select * into [" + name + "] in '" + file + "' from [" + name + "]");
    database->Close();
}

void copyDocuments(modMain& state, const QString& plan, jet::Recordset& documents) {
    for (; !documents.Eof(); documents.MoveNext()) {
        const QString key = documents.Get(u"Key").ToText();
        try {
            state.gFso->CopyFile(documentPath(state, plan, key),
                                 templateDocumentPath(state, plan, key), true);
        } catch (const RunTimeError& failure) {
            if (failure.number() != error::fileNotFound) {
                throw;
            }
        }
    }
}

void enlist(modMain& state, const QString& name) {
    const auto list = state.gDbTemplate->OpenRecordset(QStringLiteral("遍历表"));
    list->AddNew();
    list->Set(u"名称", name);
    list->Update();
}

void store(modMain& state, const QString& plan) {
    jet::LastingTogether changes(*state.gWs);
    copyTable(state, plan);
    const auto documents =
        state.gDbUser->OpenRecordset("Select * from " + plan + " where 是否文档='是'");
    makeFolder(state, plan);
    copyDocuments(state, plan, *documents);
    enlist(state, plan);
    changes.end();
}

} // namespace

StoreOutcome mnuSaveTemplate(modMain& state, Workbench& workbench, const Services& services) {
    QString plan;
    try {
        plan = currentPlan(state);
        store(state, plan);
        updateTreeTemplate(state, *state.gDbTemplate, workbench.TrvTemplate, false,
                           services.messages, services.splash);
        return {};
    } catch (const RunTimeError& failure) {
        if (failure.number() == error::tableExists) {
            services.messages.tell("标书模板中已存在 [ " + plan + " ] ！",
                                   desktop::Icon::information, QStringLiteral("提示"));
            return {Stored::alreadyThere, {}};
        }
        return {Stored::failed, QString::fromStdU16String(failure.description())};
    }
}

} // namespace qvnd::outline
