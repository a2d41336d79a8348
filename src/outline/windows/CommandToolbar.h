#pragma once

#include <QToolBar>

#include <vector>

namespace qvnd::outline {

// A toolbar of commands. Its positions count the separators; a click is told by the button's key,
// enabling goes by position.
class CommandToolbar : public QToolBar {
    Q_OBJECT

public:
    struct Button {
        QString key; // empty: a separator
        QString tip;
        QString icon; // see commandIcon
    };

    // `name` is the object's name; a button's is that with "_" and its key.
    CommandToolbar(const QString& name, const std::vector<Button>& buttons, QWidget* parent);

    // Counted from 1.
    QAction* at(int position) const { return actions().at(position - 1); }

signals:
    void buttonClick(const QString& key);

private:
    void add(const Button& button);
};

} // namespace qvnd::outline
