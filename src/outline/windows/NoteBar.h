#pragma once

#include <QWidget>

class QLabel;
class QPushButton;

namespace qvnd::outline {

// The buttons beside the text of a NoteBar.
enum class NoteOffer {
    undo,    // 撤消 and 详情: of a command that can be taken back
    redo,    // 恢复 and 详情: of an undo
    details, // 详情 alone: of what no button leads back from
    nothing, // of a command that has changed nothing
};

// What a command did beyond what its name says: a bar below the upper panes, with 撤消 and 详情. It
// asks for nothing, takes no focus, and goes with the next command. Its window makes room for it
// when `changed` tells that it has come, gone or got another text.
class NoteBar : public QWidget {
    Q_OBJECT

public:
    explicit NoteBar(QWidget* parent);

    void tell(const QString& text, NoteOffer offer = NoteOffer::undo);
    void tellAlone(const QString& text) { tell(text, NoteOffer::nothing); }
    void clear();
    QString text() const;
    // Nothing while it is hidden.
    NoteOffer offer() const;
    // Pixels that it wants at that width; 0 while it is hidden.
    int wantedHeight(int width) const;

signals:
    void changed();
    void undo();
    void redo();
    void details();

private:
    NoteOffer offer_ = NoteOffer::nothing;
    QLabel* text_;
    QPushButton* undo_;
    QPushButton* redo_;
    QPushButton* details_;
};

} // namespace qvnd::outline
