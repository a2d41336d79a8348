#include "plans/windows/DlgNewWindow.h"

#include "plans/windows/PlanNameBox.h"

#include <QCalendarWidget>
#include <QDateEdit>
#include <QFormLayout>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QTextEdit>
#include <QVBoxLayout>

#include <functional>
#include <utility>

using namespace Qt::StringLiterals;

namespace qvnd::plans {

namespace {

constexpr int textWidth = 340;
constexpr int explanationHeight = 110;
constexpr int gap = 4;

// The title of the frame stands in its upper edge and not above it.
const QString titleInFrame =
    u"QGroupBox { border: 1px solid palette(mid); border-radius: 3px;"
    " margin-top: 0.7em; padding-top: 0.5em; }"
    "QGroupBox::title { subcontrol-origin: margin; left: 10px; padding: 0 4px; }"_s;

// Enter in a box of one line runs the command, and does not go on to the dialog.
class EnterFilter : public QObject {
public:
    EnterFilter(QObject* parent, std::function<void()> command)
        : QObject(parent), command_(std::move(command)) {}

    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() != QEvent::KeyPress) {
            return false;
        }
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key != Qt::Key_Return && key != Qt::Key_Enter) {
            return false;
        }
        command_();
        return true;
    }

private:
    std::function<void()> command_;
};

// "编  制  人：" is read as 编制人.
QString spoken(const QString& label) { return QString(label).remove(u' ').remove(u'：'); }

} // namespace

DlgNewWindow::DlgNewWindow(modMain& state, outline::Workbench& workbench,
                           desktop::MessageBoxes& messages, desktop::SplashScreen& splash,
                           ShowMode mode, QWidget* parent)
    : QDialog(parent), dialog_(state, workbench, messages, splash, mode),
      TxtName_(new PlanNameBox(messages)), DTP_(new QDateEdit), RtfExplain_(new QTextEdit) {
    setObjectName(u"DlgNew"_s);
    auto* layout = new QVBoxLayout(this);
    auto* form = new QFormLayout;
    form->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    layout->addLayout(form);

    addTo(*form, u"方案名称："_s, *TxtName_, u"TxtName"_s);
    TxtName_->setMinimumWidth(textWidth);
    TxtBldOffice_ = addText(*form, u"建设单位："_s, u"TxtBldOffice"_s);
    TxtConOffice_ = addText(*form, u"施工单位："_s, u"TxtConOffice"_s);
    TxtEdit_ = addText(*form, u"编  制  人："_s, u"TxtEdit"_s);
    TxtDecide_ = addText(*form, u"审  批  人："_s, u"TxtDecide"_s);
    addTo(*form, u"审批日期："_s, *DTP_, u"DTP"_s);
    setUpDate();
    layout->addSpacing(gap);
    addExplanation(*layout);
    layout->addSpacing(gap);
    addButtons(*layout);

    connect(TxtName_, &PlanNameBox::enterPressed, this, &DlgNewWindow::BtnOk);
    dialog_.Load();
    fillControls();
    const bool isNew = mode == ShowMode::newPlan;
    setWindowTitle(isNew ? u"新建方案"_s : u"工程信息"_s);
    setAccessibleName(windowTitle());
    if (!isNew) {
        TxtName_->fixName(dialog_.form.TxtName);
    }
    (isNew ? TxtName_ : TxtBldOffice_)->setFocus();
}

void DlgNewWindow::setUpDate() {
    const QLocale chinese(QLocale::Chinese, QLocale::China);
    DTP_->setCalendarPopup(true);
    DTP_->setLocale(chinese);
    DTP_->setDisplayFormat(u"yyyy年MM月dd日"_s);
    DTP_->calendarWidget()->setLocale(chinese);
    DTP_->calendarWidget()->setFirstDayOfWeek(Qt::Monday);
}

void DlgNewWindow::addExplanation(QBoxLayout& layout) {
    auto* frame = new QGroupBox(u"注释"_s);
    frame->setStyleSheet(titleInFrame);
    auto* inside = new QVBoxLayout(frame);
    RtfExplain_->setObjectName(u"RtfExplain"_s);
    RtfExplain_->setAccessibleName(u"注释"_s);
    RtfExplain_->setTabChangesFocus(true);
    RtfExplain_->setMinimumHeight(explanationHeight);
    inside->addWidget(RtfExplain_);
    layout.addWidget(frame, 1);
}

void DlgNewWindow::addTo(QFormLayout& form, const QString& label, QWidget& box,
                         const QString& name) {
    box.setObjectName(name);
    box.setAccessibleName(spoken(label));
    form.addRow(label, &box);
}

QLineEdit* DlgNewWindow::addText(QFormLayout& form, const QString& label, const QString& name) {
    auto* box = new QLineEdit;
    addTo(form, label, *box, name);
    box->installEventFilter(new EnterFilter(this, [this] { BtnOk(); }));
    return box;
}

void DlgNewWindow::addButtons(QBoxLayout& layout) {
    auto* row = new QHBoxLayout;
    row->addStretch();
    auto* ok = new QPushButton(u"确定(&O)"_s);
    ok->setObjectName(u"BtnOk"_s);
    ok->setAccessibleName(u"确定"_s);
    auto* cancel = new QPushButton(u"取消(&C)"_s);
    cancel->setObjectName(u"BtnCancel"_s);
    cancel->setAccessibleName(u"取消"_s);
    row->addWidget(ok);
    row->addWidget(cancel);
    layout.addLayout(row);
    connect(ok, &QPushButton::clicked, this, &DlgNewWindow::BtnOk);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
}

void DlgNewWindow::fillControls() {
    const PlanForm& form = dialog_.form;
    TxtBldOffice_->setText(form.TxtBldOffice);
    TxtConOffice_->setText(form.TxtConOffice);
    TxtEdit_->setText(form.TxtEdit);
    TxtDecide_->setText(form.TxtDecide);
    DTP_->setDate(form.DTP);
    RtfExplain_->setPlainText(form.RtfExplain);
}

void DlgNewWindow::readControls() {
    dialog_.form = {TxtName_->text(),          TxtBldOffice_->text(), TxtConOffice_->text(),
                    TxtEdit_->text(),          TxtDecide_->text(),    DTP_->date(),
                    RtfExplain_->toPlainText()};
}

void DlgNewWindow::BtnOk() {
    readControls();
    if (dialog_.BtnOk()) {
        accept();
    }
}

// Enter runs BtnOk from the boxes that say so, and from nowhere else.
void DlgNewWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) {
        QDialog::keyPressEvent(event);
    }
}

} // namespace qvnd::plans
