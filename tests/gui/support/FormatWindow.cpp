#include "gui/support/FormatWindow.h"

#include "format/windows/CoverPreview.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QCalendarWidget>
#include <QComboBox>
#include <QDateEdit>
#include <QImage>
#include <QInputMethodEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>
#include <QTest>

namespace qvnd::test {

void FormatWindow::open() {
    window = std::make_unique<format::frmBidSetWindow>(world.state, world.dialog, world.messages);
    window->show();
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
}

void FormatWindow::openAgain() {
    window->close();
    window.reset();
    world.dialog.Unload();
    open();
}

QWidget& FormatWindow::reach(const QString& name) {
    QWidget& control = part(name);
    for (QWidget* page = &control; page; page = page->parentWidget()) {
        auto* stack = page->parentWidget();
        auto* tabs = stack ? qobject_cast<QTabWidget*>(stack->parentWidget()) : nullptr;
        if (tabs && tabs->indexOf(page) >= 0) {
            tabs->setCurrentWidget(page);
        }
    }
    QCoreApplication::processEvents();
    return control;
}

void FormatWindow::click(const QString& name) {
    QWidget& control = reach(name);
    ASSERT_TRUE(control.isVisible() && control.isEnabled()) << name.toStdString();
    control.setFocus();
    QTest::mouseClick(&control, Qt::LeftButton, {},
                      qobject_cast<QPushButton*>(&control) ? control.rect().center()
                                                           : QPoint(10, control.height() / 2));
    QCoreApplication::processEvents();
}

void FormatWindow::pick(const QString& name, const QString& entry) {
    auto& box = static_cast<QComboBox&>(reach(name));
    box.setFocus();
    QTest::keyClick(&box, Qt::Key_F4);
    const int row = box.findText(entry);
    ASSERT_GE(row, 0) << entry.toStdString();
    ASSERT_TRUE(box.view()->isVisible()) << name.toStdString();
    box.view()->setCurrentIndex(box.model()->index(row, 0));
    QTest::keyClick(box.view(), Qt::Key_Return);
    QCoreApplication::processEvents();
}

void FormatWindow::type(const QString& name, const QString& text) {
    auto& box = static_cast<QLineEdit&>(reach(name));
    box.setFocus();
    box.selectAll();
    if (text.isEmpty()) {
        QTest::keyClick(&box, Qt::Key_Backspace);
        return;
    }
    QInputMethodEvent typed;
    typed.setCommitString(text);
    QCoreApplication::sendEvent(&box, &typed);
}

void FormatWindow::leave(const QString& name) {
    QTest::keyClick(&reach(name), Qt::Key_Tab);
    QCoreApplication::processEvents();
}

void FormatWindow::clickEntry(const QString& list, int row) {
    auto& box = static_cast<QListWidget&>(reach(list));
    const QRect place = box.visualItemRect(box.item(row));
    QTest::mouseClick(box.viewport(), Qt::LeftButton, {}, place.center());
    QCoreApplication::processEvents();
}

void FormatWindow::doubleClickEntry(const QString& list, int row) {
    clickEntry(list, row);
    auto& box = part<QListWidget>(list);
    QTest::mouseDClick(box.viewport(), Qt::LeftButton, {},
                       box.visualItemRect(box.item(row)).center());
    QCoreApplication::processEvents();
}

namespace {

// The sheet of a month begins with the last days of the one before and ends with the first of the
// next; a first column may tell the weeks' numbers, the first row the names of the days.
QModelIndex cellOf(const QTableView& sheet, QDate day) {
    const QAbstractItemModel& cells = *sheet.model();
    QModelIndex found;
    for (int row = 1; row < cells.rowCount(); ++row) {
        for (int column = cells.columnCount() - 7; column < cells.columnCount(); ++column) {
            const QModelIndex cell = cells.index(row, column);
            if (cell.data().toInt() == day.day() && (!found.isValid() || day.day() > 15)) {
                found = cell;
            }
        }
    }
    return found;
}

} // namespace

void FormatWindow::clickDay(const QString& name, QDate day) {
    auto& date = static_cast<QDateEdit&>(reach(name));
    date.setFocus();
    QTest::mouseClick(&date, Qt::LeftButton, {}, QPoint(date.width() - 6, date.height() / 2));
    ASSERT_TRUE(date.calendarWidget()->isVisible());
    date.calendarWidget()->setCurrentPage(day.year(), day.month());
    auto& days = *date.calendarWidget()->findChild<QTableView*>("qt_calendar_calendarview");
    QTest::mouseClick(days.viewport(), Qt::LeftButton, {},
                      days.visualRect(cellOf(days, day)).center());
    QCoreApplication::processEvents();
}

void FormatWindow::key(const QString& name, Qt::Key key, Qt::KeyboardModifiers modifiers) {
    QWidget& control = reach(name);
    control.setFocus();
    QTest::keyClick(&control, key, modifiers);
}

QString FormatWindow::text(const QString& name) {
    QWidget& control = part(name);
    if (const auto* box = qobject_cast<QComboBox*>(&control)) {
        return box->currentText();
    }
    if (const auto* label = qobject_cast<QLabel*>(&control)) {
        return label->text();
    }
    if (const auto* list = qobject_cast<QListWidget*>(&control)) {
        return list->currentItem() ? list->currentItem()->text() : QString();
    }
    return static_cast<QLineEdit&>(control).text();
}

bool FormatWindow::isChecked(const QString& name) {
    return part<QAbstractButton>(name).isChecked();
}

QMap<QString, QString> FormatWindow::tables() {
    QMap<QString, QString> all;
    for (const char* table : {"章节设置表", "页眉页脚表", "页面设置表", "封面表", "是否设置表",
                              "当前自定义", "设置库", "封面库", "自定义表"}) {
        const auto rows = world.settings().OpenRecordset(QStringLiteral("Select * from ") + table);
        for (int row = 1; !rows->Eof(); rows->MoveNext(), ++row) {
            QString place = table;
            if (place == QStringLiteral("章节设置表")) {
                place += ' ' + rows->Get(u"级别").TextOrEmpty();
            } else if (row > 1) {
                place += ' ' + QString::number(row);
            }
            for (const jet::Field& field : rows->Fields()) {
                if (field.Name != QStringLiteral("ID")) {
                    all[place + '.' + field.Name] = rows->Get(field.Name).TextOrEmpty();
                }
            }
        }
    }
    return all;
}

QStringList FormatWindow::changes(const QMap<QString, QString>& before,
                                  const QMap<QString, QString>& after) {
    QStringList changes;
    for (auto at = after.begin(); at != after.end(); ++at) {
        if (!before.contains(at.key()) || before[at.key()] != at.value()) {
            changes << at.key() + '=' + at.value();
        }
    }
    for (auto at = before.begin(); at != before.end(); ++at) {
        if (!after.contains(at.key())) {
            changes << at.key() + " gone";
        }
    }
    return changes;
}

namespace {

QString yesNo(bool yes) { return yes ? "是" : "否"; }

QString placeOf(Qt::Alignment alignment) {
    return alignment & Qt::AlignLeft ? "左" : alignment & Qt::AlignRight ? "右" : "中";
}

void describe(const QLabel& label, const QString& name, QMap<QString, QString>& all) {
    all[name + ".text"] = label.text();
    all[name + ".font"] = label.font().family();
    all[name + ".size"] = QString::number(label.font().pointSizeF(), 'f', 1);
    all[name + ".place"] = placeOf(label.alignment());
}

void describe(const QListWidget& list, const QString& name, QMap<QString, QString>& all) {
    QStringList entries;
    for (int row = 0; row < list.count(); ++row) {
        entries << list.item(row)->text();
    }
    all[name + ".entries"] = entries.join(' ');
    all[name + ".text"] = list.currentItem() ? list.currentItem()->text() : QString();
}

void describe(const QWidget& control, QMap<QString, QString>& all) {
    const QString name = control.objectName();
    all[name + ".enabled"] = yesNo(control.isEnabled());
    if (const auto* label = qobject_cast<const QLabel*>(&control)) {
        describe(*label, name, all);
    } else if (const auto* list = qobject_cast<const QListWidget*>(&control)) {
        describe(*list, name, all);
    } else if (const auto* picture = qobject_cast<const format::PictureView*>(&control)) {
        all[name + ".picture"] = yesNo(picture->hasPicture());
    } else if (const auto* button = qobject_cast<const QAbstractButton*>(&control)) {
        all[name + ".checked"] = yesNo(button->isChecked());
    } else if (const auto* box = qobject_cast<const QComboBox*>(&control)) {
        all[name + ".text"] = box->currentText();
        all[name + ".count"] = QString::number(box->count());
    } else if (const auto* date = qobject_cast<const QDateEdit*>(&control)) {
        all[name + ".date"] = date->date().toString(Qt::ISODate);
    } else if (const auto* field = qobject_cast<const QLineEdit*>(&control)) {
        all[name + ".text"] = field->text();
    }
}

} // namespace

QMap<QString, QString> FormatWindow::shown() {
    QMap<QString, QString> all;
    for (const format::Control* control : world.form().controls.all()) {
        describe(part(control->name()), all);
    }
    const FormatSwitches& switches = world.state.FormatSwitches;
    all["gMultLevelOn"] = yesNo(switches.gMultLevelOn);
    all["gChildDocAsNumber"] = yesNo(switches.gChildDocAsNumber);
    all["gBlankLineAroundTitle"] = yesNo(switches.gBlankLineAroundTitle);
    all["opened"] = world.shell.opened.join(' ').section('/', -1);
    all["visible"] = yesNo(window->isVisible());
    return all;
}

QStringList FormatWindow::told() const {
    QStringList texts;
    for (const desktop::Message& message : world.messages.shown) {
        texts << message.text;
    }
    return texts;
}

void FormatWindow::keepLibrary(const QString& save, const QString& name) {
    world.inputs.answers << name;
    click(save);
}

QString FormatWindow::writePicture(const QString& path, QColor color) {
    QImage image(8, 8, QImage::Format_RGB32);
    image.fill(color);
    image.save(world.folder.path(path), "BMP");
    return world.folder.path(path);
}

QColor FormatWindow::previewed() {
    reach("Image1");
    const QImage seen = part("Picture1").grab().toImage();
    return seen.pixelColor(seen.rect().center());
}

} // namespace qvnd::test
