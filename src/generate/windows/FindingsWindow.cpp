#include "generate/windows/FindingsWindow.h"

#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QStyledItemDelegate>
#include <QTreeWidget>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace qvnd::generate {

namespace {

constexpr QSize sizeWithRows{720, 360};
constexpr int keyRole = Qt::UserRole;

// Gives a row the height that its texts need in columns as wide as they are, while the texts want
// the width of one line each; a tree by itself counts one line.
class WrappedTexts : public QStyledItemDelegate {
public:
    explicit WrappedTexts(QTreeView& view) : QStyledItemDelegate(&view), view_(view) {}

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        QStyleOptionViewItem inColumn = option;
        inColumn.rect = QRect(0, 0, view_.columnWidth(index.column()), 1);
        return {QStyledItemDelegate::sizeHint(option, index).width(),
                QStyledItemDelegate::sizeHint(inColumn, index).height()};
    }

private:
    QTreeView& view_;
};

} // namespace

FindingsWindow::FindingsWindow(const QString& title, QWidget* parent)
    : QDialog(parent), summary_(new QLabel), list_(new QTreeWidget),
      close_(new QPushButton(u"关闭"_s)) {
    setWindowTitle(title);
    setAccessibleName(title);
    summary_->setObjectName(u"lblSummary"_s);
    summary_->setWordWrap(true);
    list_->setObjectName(u"lstFindings"_s);
    list_->setAccessibleName(title);
    list_->setRootIsDecorated(false);
    list_->setWordWrap(true);
    list_->setItemDelegate(new WrappedTexts(*list_));
    list_->setAlternatingRowColors(true);
    close_->setObjectName(u"cmdClose"_s);
    close_->setAccessibleName(u"关闭"_s);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(summary_);
    layout->addWidget(list_);
    layout->addWidget(close_, 0, Qt::AlignRight);
    resize(sizeWithRows);
    connect(close_, &QPushButton::clicked, this, &QDialog::hide);
    connect(list_, &QTreeWidget::currentItemChanged, this, &FindingsWindow::choose);
    connect(list_->header(), &QHeaderView::sectionResized, list_, &QTreeView::doItemsLayout,
            Qt::QueuedConnection);
    // The row that is the current one already, while another node has been selected.
    connect(list_, &QTreeWidget::itemClicked, this, &FindingsWindow::choose);
}

void FindingsWindow::choose(const QTreeWidgetItem* item) {
    if (item && !item->data(0, keyRole).toString().isEmpty()) {
        emit nodeChosen(item->data(0, keyRole).toString());
    }
}

void FindingsWindow::present(const Contents& contents) {
    summary_->setText(contents.summary);
    {
        const QSignalBlocker quiet(list_);
        list_->clear();
    }
    list_->setHeaderLabels(contents.headers);
    for (const Row& row : contents.rows) {
        auto* item = new QTreeWidgetItem(row.columns);
        item->setData(0, keyRole, row.key);
        for (int column = 0; column < row.columns.size(); ++column) {
            item->setToolTip(column, row.columns[column]);
        }
        list_->addTopLevelItem(item);
    }
    const bool hasRows = !contents.rows.isEmpty();
    list_->setVisible(hasRows);
    resize(hasRows ? sizeWithRows : QSize(sizeWithRows.width() / 2, sizeHint().height()));
    for (int column = 0; column + 1 < contents.headers.size(); ++column) {
        list_->resizeColumnToContents(column);
        list_->setColumnWidth(column,
                              std::min(list_->columnWidth(column), sizeWithRows.width() / 3));
    }
    close_->setFocus(); // in the list it would choose the first row
    show();
    raise();
    activateWindow();
}

} // namespace qvnd::generate
