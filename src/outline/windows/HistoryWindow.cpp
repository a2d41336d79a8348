#include "outline/windows/HistoryWindow.h"

#include "outline/PutBack.h"
#include "platform/desktop/windows/NamedButton.h"
#include "platform/history/StepWords.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSplitter>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace qvnd::outline {

namespace {

using history::Change;
using history::Step;

constexpr int stepRole = Qt::UserRole;
constexpr int orderRole = Qt::UserRole + 1;
constexpr QSize usualSize{760, 520};

// The choices of the period, in days back from today; none for all that there is.
constexpr std::array<int, 4> periods{0, 1, 7, 30};

// Steps of one second keep their order.
class StepItem : public QTreeWidgetItem {
public:
    using QTreeWidgetItem::QTreeWidgetItem;

    bool operator<(const QTreeWidgetItem& other) const override {
        const int column = treeWidget() == nullptr ? 0 : treeWidget()->sortColumn();
        if (column != 0 && text(column) != other.text(column)) {
            return text(column).localeAwareCompare(other.text(column)) < 0;
        }
        return data(0, orderRole).toLongLong() < other.data(0, orderRole).toLongLong();
    }
};

QTreeWidget* list(const QString& name, const QString& spoken, const QStringList& headers) {
    auto* made = new QTreeWidget;
    made->setObjectName(name);
    made->setAccessibleName(spoken);
    made->setRootIsDecorated(false);
    made->setHeaderLabels(headers);
    made->header()->setFocusPolicy(Qt::NoFocus);
    made->setUniformRowHeights(true);
    return made;
}

QPushButton* button(const QString& name, const QString& caption, const QString& spoken) {
    QPushButton* made = desktop::namedButton(name, caption, spoken);
    made->setAutoDefault(false);
    return made;
}

QString kindText(const Step& step) {
    return step.kind == history::StepKind::unfinished ? u"（未做完）"_s : QString();
}

// A step that a whole day was joined to may have so many lines that the window would not fit.
QString firstLines(const QString& note) {
    constexpr qsizetype mostLines = 6;
    const QStringList lines = note.split(u'\n');
    return lines.size() <= mostLines
               ? note
               : lines.mid(0, mostLines).join(u'\n') + u"\n…… 共 %1 行"_s.arg(lines.size());
}

QComboBox* choice(const QString& name, const QString& spoken, const QStringList& choices) {
    auto* made = new QComboBox;
    made->setObjectName(name);
    made->setAccessibleName(spoken);
    made->addItems(choices);
    return made;
}

} // namespace

HistoryWindow::HistoryWindow(Source source, QWidget* parent)
    : QDialog(parent), source_(std::move(source)), search_(new QLineEdit),
      plan_(choice(u"historyPlan"_s, u"方案"_s, {u"所有方案"_s})),
      period_(choice(u"historyPeriod"_s, u"时间"_s,
                     {u"全部时间"_s, u"今天"_s, u"最近 7 天"_s, u"最近 30 天"_s})),
      steps_(list(u"historySteps"_s, u"操作"_s, {u"时间"_s, u"方案"_s, u"操作"_s})),
      changes_(list(u"historyChanges"_s, u"这一步的改动"_s, {u"改动"_s})), note_(new QLabel),
      before_(button(u"historyBefore"_s, u"回到这一步之前(&B)"_s, u"回到这一步之前"_s)),
      behind_(button(u"historyBehind"_s, u"回到这一步之后(&A)"_s, u"回到这一步之后"_s)),
      putBack_(button(u"historyPutBack"_s, u"放回这一项(&P)"_s, u"放回这一项"_s)),
      takeOut_(button(u"historyTakeOut"_s, u"取出文件(&T)"_s, u"取出文件"_s)),
      close_(button(u"historyClose"_s, u"关闭"_s, u"关闭"_s)) {
    setObjectName(u"HistoryWindow"_s);
    setWindowTitle(u"操作历史"_s);
    setAccessibleName(windowTitle());
    search_->setObjectName(u"historySearch"_s);
    search_->setAccessibleName(u"按名称查找"_s);
    search_->setPlaceholderText(u"按节点、文件或操作的名称查找"_s);
    search_->setClearButtonEnabled(true);
    note_->setObjectName(u"historyNote"_s);
    note_->setWordWrap(true);
    note_->setTextFormat(Qt::PlainText);
    steps_->setSortingEnabled(true);
    steps_->sortByColumn(0, Qt::DescendingOrder);
    build();
    connectAll();
    resize(usualSize);
}

void HistoryWindow::build() {
    auto* filters = new QHBoxLayout;
    filters->addWidget(search_, 2);
    filters->addWidget(plan_, 1);
    filters->addWidget(period_, 1);
    auto* parts = new QSplitter(Qt::Vertical);
    parts->setChildrenCollapsible(false);
    parts->addWidget(steps_);
    parts->addWidget(changes_);
    auto* buttons = new QHBoxLayout;
    for (QPushButton* button : {before_, behind_, putBack_, takeOut_}) {
        buttons->addWidget(button);
    }
    buttons->addStretch();
    buttons->addWidget(close_);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(filters);
    layout->addWidget(parts, 1);
    layout->addWidget(note_);
    layout->addLayout(buttons);
}

void HistoryWindow::connectAll() {
    connect(search_, &QLineEdit::textChanged, this, &HistoryWindow::refresh);
    connect(plan_, &QComboBox::activated, this, &HistoryWindow::refresh);
    connect(period_, &QComboBox::activated, this, &HistoryWindow::refresh);
    connect(steps_, &QTreeWidget::currentItemChanged, this, &HistoryWindow::showChanges);
    connect(changes_, &QTreeWidget::currentItemChanged, this, &HistoryWindow::offer);
    connect(before_, &QPushButton::clicked, this, [this] { emit goBefore(chosen()); });
    connect(behind_, &QPushButton::clicked, this, [this] { emit goBehind(chosen()); });
    connect(putBack_, &QPushButton::clicked, this, [this] {
        if (const Change* change = chosenChange()) {
            emit putBack(chosen(), Change(*change));
        }
    });
    connect(takeOut_, &QPushButton::clicked, this, [this] {
        if (const Change* change = chosenChange()) {
            emit takeOut(chosen(), source_.file(chosen(), *change), history::nameBefore(*change));
        }
    });
    connect(close_, &QPushButton::clicked, this, &QDialog::close);
}

std::int64_t HistoryWindow::chosen() const {
    const QTreeWidgetItem* item = steps_->currentItem();
    return item == nullptr ? history::beginning : item->data(0, stepRole).toLongLong();
}

const Change* HistoryWindow::chosenChange() const {
    const int row = changes_->indexOfTopLevelItem(changes_->currentItem());
    return row < 0 ? nullptr : &shown_[row];
}

void HistoryWindow::fillPlans(const QList<Step>& steps) {
    const QString shown = plan_->currentIndex() > 0 ? plan_->currentText() : QString();
    QStringList plans{plan_->itemText(0)};
    for (const Step& step : steps) {
        plans << step.plans();
    }
    plans.removeDuplicates();
    plan_->clear();
    plan_->addItems(plans);
    plan_->setCurrentIndex(std::max(0, plan_->findText(shown)));
}

bool HistoryWindow::isWanted(const Step& step) const {
    const int days = periods.at(static_cast<std::size_t>(period_->currentIndex()));
    const bool isRecent =
        days == 0 || step.time.date() > QDate::currentDate().addDays(-qint64{days});
    const bool isOfPlan = plan_->currentIndex() <= 0 || step.plans().contains(plan_->currentText());
    return isRecent && isOfPlan && !step.isBookkeeping();
}

// The state that the work space has is marked; steps that were undone lie behind it or beside it.
void HistoryWindow::refresh() {
    const std::int64_t wanted = chosen();
    fillPlans(source_.steps({}));
    head_ = source_.head();
    steps_->setSortingEnabled(false);
    steps_->clear();
    for (const Step& step : source_.steps(search_->text().trimmed())) {
        if (isWanted(step)) {
            auto* item = new StepItem(QStringList{
                step.time.toString(u"yyyy-MM-dd HH:mm:ss"_s), step.plans().join(u'、'),
                step.title + kindText(step) + (step.id == head_ ? u"　← 现在"_s : QString())});
            item->setData(0, stepRole, qlonglong{step.id});
            item->setData(0, orderRole, steps_->topLevelItemCount());
            item->setToolTip(2, step.note);
            steps_->addTopLevelItem(item);
        }
    }
    steps_->setSortingEnabled(true);
    for (int column = 0; column < steps_->columnCount(); ++column) {
        steps_->resizeColumnToContents(column);
    }
    steps_->setCurrentItem(steps_->topLevelItem(0));
    choose(wanted);
    showChanges();
}

void HistoryWindow::choose(std::int64_t step) {
    for (int i = 0; i < steps_->topLevelItemCount(); ++i) {
        if (steps_->topLevelItem(i)->data(0, stepRole).toLongLong() == step) {
            steps_->setCurrentItem(steps_->topLevelItem(i));
        }
    }
}

void HistoryWindow::showChanges() {
    changes_->clear();
    note_->clear();
    shown_.clear();
    if (const std::int64_t step = chosen(); step != history::beginning) {
        shown_ = source_.changes(step);
        for (const Change& change : shown_) {
            changes_->addTopLevelItem(new QTreeWidgetItem({history::lineOf(change)}));
        }
        note_->setToolTip(steps_->currentItem()->toolTip(2));
        note_->setText(firstLines(note_->toolTip()));
    } else {
        note_->setToolTip({});
        note_->setText(u"没有符合条件的操作。"_s);
    }
    note_->setVisible(!note_->text().isEmpty());
    offer();
}

void HistoryWindow::offer() {
    const bool isStep = chosen() != history::beginning;
    before_->setEnabled(isStep);
    behind_->setEnabled(isStep && chosen() != head_);
    const Change* change = chosenChange();
    putBack_->setEnabled(change != nullptr && canPutBack(*change));
    takeOut_->setEnabled(change != nullptr && !source_.file(chosen(), *change).isEmpty());
}

} // namespace qvnd::outline
