#pragma once

#include "format/controls/Control.h"

#include <QDate>
#include <QStringList>

// The controls that hold a text, an entry of a list or a date.
namespace qvnd::format {

// A control that shows a text. Change follows every real change of it by assignment or typing.
class TextControl : public Control {
public:
    using Control::Control;

    const QString& text() const { return text_; }
    void setText(const QString& text) {
        if (text != text_) {
            text_ = text;
            show();
            raise(Change);
        }
    }

    // The dialog's handler; an empty one does nothing.
    std::function<void()> Change;

protected:
    // Shows another text without Change.
    void showText(const QString& text) {
        text_ = text;
        show();
    }

private:
    QString text_;
};

// A text box; LostFocus follows the user's leaving it.
class TextBox : public TextControl {
public:
    using TextControl::TextControl;

    // The user's typing, pasting or erasing: the whole text as it stands then. Characters that
    // KeyPress refuses are left out, however they came.
    void type(const QString& text) {
        const QString allowed = withoutRefused(text);
        dialog().userDid([&] { setText(allowed); });
        if (text != this->text()) {
            show();
        }
    }
    // The focus leaves the box, by the user's own doing.
    void leave() {
        dialog().userDid([&] { raise(LostFocus); });
    }

    // Why the text will be refused when the focus leaves; empty when it will not.
    QString problem() const { return Problem ? Problem(text()) : QString(); }

    // What the user is to know of the text that stands here now; it goes with that text.
    QString note() const { return text() == notedText_ ? note_ : QString(); }
    void setNote(const QString& note) {
        const bool isNews = note != this->note();
        note_ = note;
        notedText_ = text();
        if (isNews) {
            show();
        }
    }

    // The dialog's handlers; empty ones do nothing.
    std::function<void()> LostFocus;
    std::function<bool(QChar)> KeyPress;
    std::function<QString(const QString&)> Problem;

private:
    QString withoutRefused(const QString& text) const {
        QString kept;
        for (const QChar character : text) {
            if (!KeyPress || KeyPress(character)) {
                kept += character;
            }
        }
        return kept;
    }

    QString note_;
    QString notedText_;
};

// A combo box. It shows a text, which need not be an entry of its list. Assigning the text raises
// Change and never Click; a pick from the list raises Click and never Change.
class ComboBox : public TextControl {
public:
    using TextControl::TextControl;

    // Shared with other boxes that were given the same list.
    const QStringList& entries() const { return entries_; }
    // The text stays.
    void setEntries(const QStringList& entries) {
        entries_ = entries;
        show();
    }

    // The user's pick, also of the entry that is shown already.
    void pick(qsizetype entry) {
        showText(entries_.at(entry));
        dialog().userDid([&] { raise(Click); });
    }
    // The user's erasing in a box that allows it.
    void type(const QString& text) {
        dialog().userDid([&] { setText(text); });
    }

    std::function<void()> Click;

private:
    QStringList entries_;
};

// A list with at most one selected entry.
class ListBox : public Control {
public:
    using Control::Control;

    const QStringList& entries() const { return entries_; }
    // -1 while nothing is selected.
    qsizetype selected() const { return selected_; }
    // The selected entry; empty while nothing is selected.
    QString text() const { return entries_.value(selected_); }

    void add(const QString& entry) {
        entries_ << entry;
        show();
    }
    // Removing the selected entry leaves nothing selected. Error 5 for an entry that is not there.
    void remove(qsizetype entry) {
        if (entry < 0 || entry >= entries_.size()) {
            throw RunTimeError(error::invalidCall, u"无效的过程调用或参数");
        }
        entries_.removeAt(entry);
        selected_ = entry == selected_ ? -1 : selected_ - (entry < selected_ ? 1 : 0);
        show();
    }
    // Raises Click when another entry is selected than before.
    void select(qsizetype entry) {
        if (entry != selected_) {
            selected_ = entry;
            show();
            raise(Click);
        }
    }

    // The user's click, also on the entry that is selected already.
    void click(qsizetype entry) {
        selected_ = entry;
        show();
        dialog().userDid([&] { raise(Click); });
    }
    void doubleClick() {
        dialog().userDid([&] { raise(DblClick); });
    }

    std::function<void()> Click;
    std::function<void()> DblClick;

private:
    QStringList entries_;
    qsizetype selected_ = -1;
};

// A date picker: Change follows a real change of the date, Click the user's pick.
class DatePicker : public Control {
public:
    using Control::Control;

    QDate date() const { return date_; }
    void setDate(QDate date) {
        if (date != date_) {
            date_ = date;
            show();
            raise(Change);
        }
    }
    // The user's choice, in the calendar or by the keyboard.
    void pick(QDate date) {
        dialog().userDid([&] {
            setDate(date);
            raise(Click);
        });
    }

    std::function<void()> Change;
    std::function<void()> Click;

private:
    QDate date_;
};

} // namespace qvnd::format
