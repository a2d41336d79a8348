#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QList>

namespace qvnd::format {

// A text box that tells when the user leaves it for another control of the dialog, and that marks
// a text which will not be taken.
class TextField : public QLineEdit {
    Q_OBJECT

public:
    using QLineEdit::QLineEdit;

    // Why the text will not be taken; empty when it will. A red edge, the tool tip and the
    // accessible description tell it.
    void setProblem(const QString& problem);
    const QString& problem() const { return problem_; }
    // What the user is to know of the text as it stands; no mark, and no refusal.
    void setNote(const QString& note);
    const QString& note() const { return note_; }

signals:
    // Not while a menu, a list or another program has the keyboard for a moment.
    void left();
    void problemChanged();

protected:
    void focusOutEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QString problem_;
    QString note_;
    QString tip_;
};

// The line of a page that tells the problem of the first of its fields that has one, else its note,
// with the field's accessible name. Its place is kept while it is empty.
class ProblemNotice : public QLabel {
    Q_OBJECT

public:
    explicit ProblemNotice(QWidget* parent = nullptr);

    void watch(TextField& field);

    QSize minimumSizeHint() const override;

private:
    void tell();

    QList<const TextField*> fields_;
};

} // namespace qvnd::format
