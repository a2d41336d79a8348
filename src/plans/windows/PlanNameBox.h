#pragma once

#include "platform/desktop/MessageBoxes.h"

#include <QLineEdit>

namespace qvnd::plans {

// The box that takes a plan's name (TxtName). For a new plan a key that is no letter, digit or
// non-ASCII character is answered with a message and taken back once it stands in the text. Text
// that comes in one piece, by an input method, by pasting or by dropping, loses exactly the
// characters that a name cannot hold, and a message names them. For the information of a plan every
// key and every change gives a message, and the name stays.
class PlanNameBox : public QLineEdit {
    Q_OBJECT

public:
    // The messages outlive the box.
    explicit PlanNameBox(desktop::MessageBoxes& messages, QWidget* parent = nullptr);

    // Shows the name, which is not to be changed from now on.
    void fixName(const QString& name);

signals:
    void enterPressed();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;

private:
    void lookFixed();
    void tellFixed();
    void tellIllegal(const QString& illegal);
    void onChange();

    desktop::MessageBoxes& messages_;
    QString fixedName_;
    bool fixed_ = false;
    bool IllegalChar_ = false;
};

} // namespace qvnd::plans
