#pragma once

#include "format/windows/frmBidSetWindow.h"
#include "support/FormatWorld.h"

#include <QColor>
#include <QDate>
#include <QMap>

#include <gtest/gtest.h>

#include <memory>

namespace qvnd::test {

// The format dialog on the screen, on the settings of a first installation.
class FormatWindow : public testing::Test {
protected:
    // Shows it without waiting for its end.
    void open();
    // What the close box does, and then a fresh load.
    void openAgain();

    template <class Widget = QWidget>
    Widget& part(const QString& name) {
        auto* found = window->findChild<Widget*>(name);
        if (!found) {
            throw std::runtime_error("no control " + name.toStdString());
        }
        return *found;
    }

    // What a user does with a control, its tab in front.
    QWidget& reach(const QString& name);
    void click(const QString& name);
    void pick(const QString& name, const QString& entry);
    // Selects the text and types another; the focus stays.
    void type(const QString& name, const QString& text);
    // Tab, and what waits behind it.
    void leave(const QString& name);
    void clickEntry(const QString& list, int row);
    void doubleClickEntry(const QString& list, int row);
    // Opens the calendar of a date and clicks a day of it.
    void clickDay(const QString& name, QDate day);
    void key(const QString& name, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

    QString text(const QString& name);
    bool isChecked(const QString& name);

    // "table.field" or "table 级别.field" to the text of every field that the dialog writes.
    QMap<QString, QString> tables();
    // What differs, as "key=text", in the order of the keys.
    static QStringList changes(const QMap<QString, QString>& before,
                               const QMap<QString, QString>& after);
    QStringList changesSince(const QMap<QString, QString>& before) {
        return changes(before, tables());
    }
    // What the dialog shows and what the program holds beside the tables: "control.aspect" to its
    // text, "是" and "否" for yes and no.
    QMap<QString, QString> shown();
    QStringList told() const;
    // One field by its key in tables().
    QString saved(const QString& key) { return tables().value(key); }
    // Presses a button that asks for a name, and answers it.
    void keepLibrary(const QString& save, const QString& name);

    // A picture of one colour at a path of the program folder.
    QString writePicture(const QString& path, QColor color);
    // The middle of the picture's box on the cover.
    QColor previewed();

    FormatWorld world;
    std::unique_ptr<format::frmBidSetWindow> window;
};

} // namespace qvnd::test
