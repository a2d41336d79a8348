#pragma once

#include "plans/DlgNew.h"

#include <QDialog>

class QBoxLayout;
class QDateEdit;
class QFormLayout;
class QLineEdit;
class QTextEdit;

namespace qvnd::plans {

class PlanNameBox;

// The dialog for a new plan ("新建方案") and for the information of the open one ("工程信息").
// Accepted when it has ended by itself, rejected by 取消.
class DlgNewWindow : public QDialog {
    Q_OBJECT

public:
    DlgNewWindow(modMain& state, outline::Workbench& workbench, desktop::MessageBoxes& messages,
                 desktop::SplashScreen& splash, ShowMode mode, QWidget* parent = nullptr);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void addTo(QFormLayout& form, const QString& label, QWidget& box, const QString& name);
    QLineEdit* addText(QFormLayout& form, const QString& label, const QString& name);
    void setUpDate();
    void addExplanation(QBoxLayout& layout);
    void addButtons(QBoxLayout& layout);
    void fillControls();
    void readControls();
    void BtnOk();

    DlgNew dialog_;
    PlanNameBox* TxtName_;
    QLineEdit* TxtBldOffice_;
    QLineEdit* TxtConOffice_;
    QLineEdit* TxtEdit_;
    QLineEdit* TxtDecide_;
    QDateEdit* DTP_;
    QTextEdit* RtfExplain_;
};

} // namespace qvnd::plans
