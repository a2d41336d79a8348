#pragma once

#include <QWidget>

class QLabel;

namespace qvnd::outline {

// What a command did beyond what its name says: a bar below the upper panes, with 撤消 and 详情. It
// asks for nothing, takes no focus, and goes with the next command. Its window makes room for it
// when `changed` tells that it has come, gone or got another text.
class NoteBar : public QWidget {
    Q_OBJECT

public:
    explicit NoteBar(QWidget* parent);

    void tell(const QString& text);
    void clear();
    QString text() const;
    // Pixels that it wants at that width; 0 while it is hidden.
    int wantedHeight(int width) const;

signals:
    void changed();
    void undo();
    void details();

private:
    QLabel* text_;
};

} // namespace qvnd::outline
