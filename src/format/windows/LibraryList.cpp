#include "format/windows/LibraryList.h"

#include <QKeyEvent>
#include <QSignalBlocker>

namespace qvnd::format {

namespace {

constexpr int lettersOfName = 24; // average letters
constexpr int shownEntries = 4;

} // namespace

LibraryList::LibraryList(QWidget* parent) : QListWidget(parent) {
    setUniformItemSizes(true);
    setMinimumHeight(shownEntries * fontMetrics().lineSpacing());
    connect(this, &QListWidget::currentRowChanged, this, [this](int row) {
        hasTold_ = true;
        if (row >= 0) {
            emit entryClicked(row);
        }
    });
    connect(this, &QListWidget::itemClicked, this, [this](QListWidgetItem* item) {
        if (!hasTold_) {
            emit entryClicked(row(item));
        }
    });
    connect(this, &QListWidget::itemDoubleClicked, this, &LibraryList::entryOpened);
}

void LibraryList::setEntries(const QStringList& entries, qsizetype selected) {
    const QSignalBlocker blocker(this);
    if (entries != entries_) {
        entries_ = entries;
        clear();
        addItems(entries);
    }
    setCurrentRow(static_cast<int>(selected));
}

QSize LibraryList::sizeHint() const {
    return {lettersOfName * fontMetrics().averageCharWidth(), QListWidget::sizeHint().height()};
}

void LibraryList::mousePressEvent(QMouseEvent* event) {
    hasTold_ = false;
    QListWidget::mousePressEvent(event);
}

void LibraryList::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        event->accept();
        if (currentItem()) {
            emit entryOpened();
        }
        return;
    }
    QListWidget::keyPressEvent(event);
}

} // namespace qvnd::format
