#include "gui/support/FormatWindow.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QDateEdit>
#include <QImage>
#include <QInputMethodEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTabWidget>
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

QStringList FormatWindow::changesSince(const QMap<QString, QString>& before) {
    QStringList changes;
    const QMap<QString, QString> after = tables();
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
