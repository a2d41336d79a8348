#pragma once

#include <QDialog>
#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

class QLabel;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;

namespace qvnd::generate {

// A list about nodes of the outline beside the plan edit window: a row that is clicked, or reached
// with the keyboard, selects its node there. It stays open while the user works on.
class FindingsWindow : public QDialog {
    Q_OBJECT

public:
    struct Row {
        QString key; // of the node; empty when the row concerns none
        QStringList columns;
    };
    struct Contents {
        QString summary;
        QStringList headers;
        QList<Row> rows;
    };

    explicit FindingsWindow(const QString& title, QWidget* parent = nullptr);

    // Shows the list in front; what stood there before goes.
    void present(const Contents& contents);

signals:
    // Also for the row that has been chosen before.
    void nodeChosen(const QString& key);

private:
    void choose(const QTreeWidgetItem* item);

    QLabel* summary_;
    QTreeWidget* list_;
    QPushButton* close_;
};

} // namespace qvnd::generate
