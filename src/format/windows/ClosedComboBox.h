#pragma once

#include <QComboBox>
#include <QStringList>

namespace qvnd::format {

// A combo box that shows a text, which need not be an entry of its list, and takes no typing. A key
// is swallowed unless it opens the list (F4, Alt+Down) or belongs to the dialog; in the open list
// the arrow keys choose. The wheel is left to what is below, so that no value changes by scrolling.
class ClosedComboBox : public QComboBox {
    Q_OBJECT

public:
    enum class Typing {
        none,
        erasing, // Backspace and Delete work; the entries are there to choose
    };

    explicit ClosedComboBox(Typing typing, QWidget* parent = nullptr);

    // Costs nothing when it is the same list as before.
    void setEntries(const QStringList& entries);

    // A text that is longer than the box shows its beginning, one that can be erased its end.
    void setShownText(const QString& text);

signals:
    // The text that an erasing has left.
    void erased(const QString& text);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool erases(const QKeyEvent& event) const;

    Typing typing_;
    QStringList entries_;
};

} // namespace qvnd::format
