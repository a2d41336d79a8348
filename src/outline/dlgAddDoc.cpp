#include "outline/dlgAddDoc.h"

#include "outline/OutlineKeys.h"
#include "outline/OutlineRows.h"
#include "outline/TreeLoading.h"
#include "platform/desktop/MessageBoxes.h"
#include "platform/error/RunTimeError.h"
#include "platform/files/Trim.h"
#include "platform/jet/TransactionScope.h"
#include "store/OutlineFolders.h"

#include <algorithm>

namespace qvnd::outline {

using desktop::Icon;

dlgAddDoc::dlgAddDoc(modMain& state, Workbench& workbench, const Services& services, AddMode mode)
    : state_(state), workbench_(workbench), services_(services), mode_(mode) {}

Added dlgAddDoc::OK(const QString& TxtAdd) {
    try {
        return run(files::Trim(TxtAdd));
    } catch (const RunTimeError& failure) {
        services_.messages.tell(desktop::descriptionOf(failure));
        return Added::failed;
    }
}

Added dlgAddDoc::run(const QString& name) {
    const QString warning = QStringLiteral("警告！");
    const OutlineNode& selected = workbench_.TrvCurrent.Selected();
    if (isTaken(selected, name)) {
        services_.messages.tell(QStringLiteral("对不起，命名重复！"), Icon::exclamation, warning);
        return Added::duplicateName;
    }
    const QString selectedKey = selected.Key();
    const QString table = tableOfKey(selectedKey);
    jet::Database& db = *state_.gDbUser;
    jet::TransactionScope changes(*state_.gWs);

    std::int16_t base = 0;
    if (mode_ == AddMode::beside) {
        base = moveRowsOut(db, table, idOfKey(db, selectedKey));
    } else {
        const TableEnd end = endOf(db, table);
        base = toInteger(end.lastId - end.count);
    }

    const QString parentKey = mode_ == AddMode::below ? selectedKey : parentKeyOf(selectedKey);
    const auto family = rowsLike(db, table, parentKey);
    newKey_ = outline::newKey(parentKey, base, toInteger(family->RecordCount()));
    if (depthOfKey(newKey_) > deepestLevel) {
        services_.messages.tell(QStringLiteral("对不起，系统最多支持九级深度！"), Icon::exclamation,
                                warning);
        return Added::tooDeep;
    }
    addRow(*family, {files::Trim(newKey_), name, false});
    if (mode_ == AddMode::beside) {
        moveRowsBack(db, table);
    }
    levelPlanCopy(table);
    changes.commit();
    refill(table, name);
    return Added::added;
}

bool dlgAddDoc::isTaken(const OutlineNode& selected, const QString& name) const {
    const OutlineNode& parent = mode_ == AddMode::below ? selected : parentOf(selected);
    const auto& siblings = parent.childList();
    return std::any_of(siblings.begin(), siblings.end(), [&](const OutlineNode* node) {
        return node->Image() == image::folder && files::Trim(node->Text()) == name;
    });
}

void dlgAddDoc::levelPlanCopy(const QString& table) {
    state_.gDbPlan = state_.gWs->OpenDatabase(store::planDatabasePath(state_, table));
    state_.gDbPlan->Execute("DELETE * FROM " + table);
    state_.gDbUser->Execute("INSERT INTO " + table + " IN '" + state_.gDbPlan->Name() +
                            "' SELECT * FROM " + table);
    state_.gDbPlan->Close();
    state_.gDbPlan.reset();
}

void dlgAddDoc::refill(const QString& table, const QString& name) {
    const auto rs = state_.gDbUser->OpenRecordset("Select * from " + table + " order by ID asc");
    workbench_.TrvCurrent.Clear();
    FillOutlineTree(*rs, workbench_.TrvCurrent);
    workbench_.TrvCurrent.Select(&workbench_.TrvCurrent.Item(newKey_, name));
}

} // namespace qvnd::outline
