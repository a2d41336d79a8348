#pragma once

#include <QListWidget>

namespace qvnd::format {

// A list of which an entry is clicked, also the one that is selected already, or chosen by the
// arrow keys; a double click or Enter opens it.
class LibraryList : public QListWidget {
    Q_OBJECT

public:
    explicit LibraryList(QWidget* parent = nullptr);

    // Shows the entries with that one selected, -1 for none; tells nobody.
    void setEntries(const QStringList& entries, qsizetype selected);

    // Wide enough for a name, narrower than a list's usual.
    QSize sizeHint() const override;

signals:
    void entryClicked(int entry);
    void entryOpened();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QStringList entries_;
    // Whether the press of the mouse has chosen another entry, and so was told.
    bool hasTold_ = false;
};

} // namespace qvnd::format
