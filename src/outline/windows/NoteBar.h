#pragma once

#include <QWidget>

class QLabel;
class QPushButton;

namespace qvnd::outline {

// What a command did beyond what its name says: a bar below the upper panes, with 撤消 and 详情. It
// asks for nothing, takes no focus, and goes with the next command. Its window makes room for it
// when `changed` tells that it has come, gone or got another text.
class NoteBar : public QWidget {
    Q_OBJECT

public:
    explicit NoteBar(QWidget* parent);

    // Of a command that can be taken back.
    void tell(const QString& text);
    // Of one that has changed nothing: without the buttons.
    void tellAlone(const QString& text);
    void clear();
    QString text() const;
    // Pixels that it wants at that width; 0 while it is hidden.
    int wantedHeight(int width) const;

signals:
    void changed();
    void undo();
    void details();

private:
    void say(const QString& text, bool leadsBack);

    QLabel* text_;
    QPushButton* undo_;
    QPushButton* details_;
};

} // namespace qvnd::outline
