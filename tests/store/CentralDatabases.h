#pragma once

#include "platform/files/DiskFileSystem.h"
#include "store/DatabaseCreation.h"
#include "support/JetStore.h"

namespace qvnd::test {

// A program folder with its two central databases, beside which plans and templates can be laid.
class CentralDatabases : public JetStore {
protected:
    CentralDatabases() {
        state_.gWs = &state_.DBEngine.Workspaces(0);
        state_.gFso = std::make_unique<files::DiskFileSystem>();
        state_.gUserTplPath = pathOf(u"用户模板/"_qs);
        state_.gSysPath = pathOf(u"Sys/"_qs);
        QDir(folder_.path()).mkpath(u"用户模板"_qs);
        QDir(folder_.path()).mkpath(u"Sys/标书模板"_qs);
        store::CreateUserDb(state_, state_.gUserTplPath + u"Db_UsTemplate.mdb"_qs);
        store::CreateTemplateDb(state_, state_.gSysPath + u"Db_Template.mdb"_qs);
    }

    modMain state_;
};

} // namespace qvnd::test
