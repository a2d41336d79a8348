#include "plans/DlgNew.h"

#include "outline/LibraryTree.h"
#include "outline/OutlineRows.h"
#include "outline/QueryText.h"
#include "plans/PlanInformation.h"
#include "plans/PlanName.h"
#include "platform/desktop/MessageBoxes.h"
#include "platform/error/RunTimeError.h"
#include "platform/files/PlainName.h"
#include "platform/files/Trim.h"
#include "platform/jet/TransactionScope.h"
#include "store/Names.h"
#include "store/OutlineFolders.h"
#include "store/PlanLists.h"
#include "store/PlanTables.h"

namespace qvnd::plans {

using desktop::Icon;
using files::Trim;

DlgNew::DlgNew(modMain& state, outline::Workbench& workbench, desktop::MessageBoxes& messages,
               desktop::SplashScreen& splash, ShowMode mode)
    : state_(state), workbench_(workbench), messages_(messages), splash_(splash), mode_(mode) {}

void DlgNew::Load() { LoadOrSavePlanInfo(mode_ == ShowMode::information ? 2 : 1); }

bool DlgNew::BtnOk() {
    if (mode_ == ShowMode::information) {
        LoadOrSavePlanInfo(3);
        return true;
    }
    try {
        return createPlan();
    } catch (const RunTimeError& failure) {
        if (failure.number() == error::keyInvalid) {
            takeBackInvalidName(Trim(form.TxtName));
        } else {
            messages_.tell(desktop::descriptionOf(failure));
        }
        return false;
    }
}

// What is refused here never reaches the databases: neither half a plan nor the name in 当前表.
bool DlgNew::isRefused(const QString& name) {
    if (name.isEmpty()) {
        messages_.tell(QStringLiteral("对不起，名称不能为空!"), Icon::exclamation,
                       QStringLiteral("警告！"));
        return true;
    }
    const QString illegal = illegalCharacters(name);
    if (!illegal.isEmpty()) {
        messages_.tell(illegalCharactersText(illegal), Icon::exclamation);
        return true;
    }
    if (!files::isPlainName(name)) {
        messages_.tell(QStringLiteral("“%1”不能用作文件夹的名称，请换一个名称。").arg(name),
                       Icon::exclamation);
        return true;
    }
    return false;
}

bool DlgNew::createPlan() {
    const QString name = Trim(form.TxtName);
    if (isRefused(name)) {
        return false;
    }
    // A killed process must not leave a plan current that has no table: no start would get past it.
    jet::TransactionScope changes(*state_.gWs);
    makeCurrent(name);
    if (!replaceFolder(name)) {
        return false;
    }
    createTables(name);
    addRootRow(name);
    createPlanDatabase(name);
    copyToPlanDatabase(name, name);
    addInformation(name);
    copyToPlanDatabase(store::informationTableOf(name), name);
    state_.gDbPlan->Close();
    state_.gDbPlan.reset();
    store::enlist(*state_.gDbUser, name);
    changes.commit();
    showAsCurrent(name);
    outline::updateTreeTemplate(state_, *state_.gDbUser, workbench_.TrvTemplate_Us, true, messages_,
                                splash_);
    return true;
}

void DlgNew::makeCurrent(const QString& name) {
    store::forgetCurrentPlan(*state_.gDbUser);
    const auto current = store::openCurrentPlan(*state_.gDbUser);
    current->AddNew();
    current->Set(store::field::name, name);
    current->Update();
}

// False when the user keeps a folder that is there.
bool DlgNew::replaceFolder(const QString& name) {
    const QString folder = store::planFolder(state_, name);
    if (state_.gFso->FolderExists(folder)) {
        const QString question = state_.gUserTplPath + "下已存在 " + name + "，是否覆盖？";
        if (!messages_.ask(question, Icon::question, desktop::hintTitle)) {
            return false;
        }
        state_.gFso->DeleteFolder(folder, false);
    }
    state_.gFso->CreateFolder(folder);
    return true;
}

void DlgNew::createTables(const QString& name) {
    jet::TableDefs tables = state_.gDbUser->TableDefs();
    tables.Append(store::informationTable(name));
    tables.Refresh();
    tables.Append(store::outlineTable(name));
    tables.Refresh();
}

void DlgNew::addRootRow(const QString& name) {
    const auto rows = state_.gDbUser->OpenRecordset("select * from [" + name + "]");
    outline::addRow(*rows, {name, name, false});
}

void DlgNew::createPlanDatabase(const QString& name) {
    if (state_.gDbPlan) {
        state_.gDbPlan->Close();
    }
    state_.gDbPlan = state_.gWs->CreateDatabase(store::planDatabasePath(state_, name),
                                                QString::fromUtf16(jet::dbLangGeneral));
}

void DlgNew::copyToPlanDatabase(const QString& table, const QString& name) {
    state_.gDbUser->Execute("SELECT * INTO [" + table + "] IN '" +
                            store::planDatabasePath(state_, name) + "' FROM [" + table + "]");
}

void DlgNew::addInformation(const QString& name) {
    const auto rs =
        state_.gDbUser->OpenRecordset("select * from [" + store::informationTableOf(name) + "]");
    rs->AddNew();
    setInformation(*rs, {Trim(form.TxtBldOffice), Trim(form.TxtConOffice), Trim(form.TxtEdit),
                         Trim(form.TxtDecide), form.DTP, Trim(form.RtfExplain)});
    rs->Update();
}

void DlgNew::showAsCurrent(const QString& name) {
    if (workbench_.TrvCurrent.Count() >= 1) {
        workbench_.TrvCurrent.Clear();
    }
    workbench_.TrvCurrent.Add(name, name, outline::image::root, outline::image::rootSelected);
    workbench_.cmdEdit = true;
    workbench_.mnuEdit = true;
    workbench_.TbarBid[12] = true;
}

// The folder and the plan's database stay behind.
void DlgNew::takeBackInvalidName(const QString& name) {
    jet::Database& db = *state_.gDbUser;
    db.TableDefs().Delete(name);
    db.TableDefs().Delete(store::informationTableOf(name));
    db.Execute(outline::deletionFrom(store::table::planList, name));
    db.Execute(outline::deletionFrom(store::table::currentPlan, name));
    state_.Remarks << QStringLiteral("方案没有建成，它的文件夹留了下来：%1")
                          .arg(store::planFolder(state_, name));
    messages_.tell(QStringLiteral("对不起，工程名称不合法！"), Icon::exclamation,
                   desktop::hintTitle);
}

bool DlgNew::LoadOrSavePlanInfo(int mode) {
    bool isDone = true;
    try {
        if (mode == 2) {
            isDone = loadInformation();
        } else if (mode == 3) {
            saveInformation();
        }
    } catch (const RunTimeError&) {
        isDone = false;
    }
    if (!isDone) {
        messages_.tell(QStringLiteral("更新失败！"), Icon::exclamation, desktop::hintTitle);
    }
    return isDone;
}

// False when a field could not be read.
bool DlgNew::loadInformation() {
    const QString name = workbench_.TrvCurrent.Item(1).Text();
    form.TxtName = name;
    PlanInformation shown{form.TxtBldOffice, form.TxtConOffice, form.TxtEdit,
                          form.TxtDecide,    form.DTP,          form.RtfExplain};
    const QStringList unread = readInformation(*state_.gDbUser, name, shown);
    form = {name,           shown.client, shown.contractor, shown.author,
            shown.approver, shown.date,   shown.explanation};
    return unread.isEmpty();
}

void DlgNew::saveInformation() {
    const QString name = workbench_.TrvCurrent.Item(1).Text();
    const QString table = store::informationTableOf(name);
    const QString path = store::planDatabasePath(state_, name);
    const auto rs = state_.gDbUser->OpenRecordset("SELECT  * FROM " + table);
    state_.gWs->BeginTrans();
    rs->Edit();
    setInformation(*rs, {form.TxtBldOffice, form.TxtConOffice, form.TxtEdit, form.TxtDecide,
                         form.DTP, form.RtfExplain});
    rs->Update();
    const auto copy = state_.gWs->OpenDatabase(path);
    copy->Execute("DROP TABLE " + table);
    state_.gDbUser->Execute("select * into [" + table + "] IN '" + path + "' from [" + table + "]");
    state_.gWs->CommitTrans();
}

} // namespace qvnd::plans
