#pragma once

#include "outline/Workbench.h"
#include "platform/desktop/MessageBoxes.h"
#include "platform/desktop/SplashScreen.h"
#include "store/modMain.h"

#include <QDate>
#include <QString>

namespace qvnd::plans {

// What the dialog's controls hold.
struct PlanForm {
    QString TxtName;
    QString TxtBldOffice;             // 建设单位
    QString TxtConOffice;             // 施工单位
    QString TxtEdit;                  // 编制人
    QString TxtDecide;                // 审批人
    QDate DTP = QDate::currentDate(); // 编制日期
    QString RtfExplain;               // 注释, plain text
};

// How the dialog is shown: for a new plan, or for the information of the open one ("工程信息").
enum class ShowMode { newPlan, information = 2 };

// The dialog through which a plan comes into being, without its window. A new plan starts with its
// root row alone.
//
// A name that is empty, holds a character that names cannot hold, or can be no folder's ("CON") is
// refused before anything is written. Behind that nothing is undone: whatever stops BtnOk, the
// steps before it stand. Even a plan that goes no further has become the current plan in 当前表.
class DlgNew {
public:
    DlgNew(modMain& state, outline::Workbench& workbench, desktop::MessageBoxes& messages,
           desktop::SplashScreen& splash, ShowMode mode);

    PlanForm form;

    // Fills the form in the information mode.
    void Load();
    // Creates the plan, or writes the information back. True when the dialog has unloaded itself;
    // else it stays, and the user has been told why.
    bool BtnOk();
    // 2 fills the form from the plan in TrvCurrent, one control after the other, the name first:
    // what cannot be read leaves its control as it was, and the others are filled.
    // 3 writes the form to the plan's two databases; any other mode does nothing. After a failure
    // the user is told "更新失败！", and the transaction of mode 3 stays open. True when it did
    // what it should.
    bool LoadOrSavePlanInfo(int mode);

private:
    bool createPlan();
    bool isRefused(const QString& name);
    bool replaceFolder(const QString& name);
    void makeCurrent(const QString& name);
    void createTables(const QString& name);
    void addRootRow(const QString& name);
    void createPlanDatabase(const QString& name);
    void addInformation(const QString& name);
    void copyToPlanDatabase(const QString& table, const QString& name);
    void showAsCurrent(const QString& name);
    void takeBackInvalidName(const QString& name);
    bool loadInformation();
    void saveInformation();

    modMain& state_;
    outline::Workbench& workbench_;
    desktop::MessageBoxes& messages_;
    desktop::SplashScreen& splash_;
    ShowMode mode_;
};

} // namespace qvnd::plans
