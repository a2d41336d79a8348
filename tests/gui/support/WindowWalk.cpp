#include "gui/support/WindowWalk.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenuBar>
#include <QMessageBox>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QTextEdit>
#include <QToolBar>
#include <QToolButton>

#include <algorithm>
#include <functional>
#include <map>
#include <set>

namespace qvnd::test {

namespace {

// Parts of Qt's own widgets, which speak for them.
bool isOfQt(const QObject& object) {
    const char* const parts[] = {"qt_scrollarea_", "qt_spinbox_", "qt_toolbar_ext_",
                                 "qt_menubar_ext_", "qt_calendar_"};
    return std::any_of(std::begin(parts), std::end(parts), [&](const char* part) {
        return object.objectName().startsWith(QLatin1String(part));
    });
}

QString nameOf(const QObject& object) {
    return object.objectName().isEmpty() ? object.metaObject()->className() : object.objectName();
}

bool isInside(const QWidget& widget, const QWidget& window) {
    for (const QWidget* at = &widget; at && at != &window; at = at->parentWidget()) {
        if (isOfQt(*at)) {
            return false;
        }
    }
    return widget.isVisible();
}

// Brings every tab to front in turn, those inside a tab too, and looks each time.
void forEachPage(QWidget& window, const std::function<void()>& look) {
    std::set<QTabWidget*> opened;
    const std::function<void()> openTabs = [&] {
        QCoreApplication::processEvents();
        look();
        for (QTabWidget* tabs : window.findChildren<QTabWidget*>()) {
            if (!tabs->isVisible() || !opened.insert(tabs).second) {
                continue;
            }
            const int front = tabs->currentIndex();
            for (int tab = 0; tab < tabs->count(); ++tab) {
                tabs->setCurrentIndex(tab);
                openTabs();
            }
            tabs->setCurrentIndex(front);
        }
    };
    openTabs();
}

// Every shown widget of the window's own, also those of a tab in the back, for which the tab is
// brought to front.
void forEachWidget(QWidget& window, const std::function<void(QWidget&)>& look) {
    std::set<QWidget*> seen;
    const auto lookOnce = [&](QWidget& widget) {
        if (isInside(widget, window) && seen.insert(&widget).second) {
            look(widget);
        }
    };
    look(window);
    forEachPage(window, [&] {
        for (QWidget* widget : window.findChildren<QWidget*>()) {
            if (widget->window() == &window) {
                lookOnce(*widget);
            }
        }
    });
}

bool isControl(const QWidget& widget) {
    if (widget.inherits("QHeaderView")) {
        return false; // only tells what stands below it
    }
    if (widget.focusProxy()) {
        return false; // as the text of a combo box, whose keyboard the box has
    }
    if (const auto* slider = qobject_cast<const QAbstractSlider*>(&widget)) {
        return qobject_cast<const QAbstractScrollArea*>(slider->parentWidget()) == nullptr;
    }
    const char* const kinds[] = {"QAbstractButton",  "QLineEdit", "QTextEdit", "QAbstractItemView",
                                 "QAbstractSpinBox", "QComboBox", "QTabBar"};
    for (const char* kind : kinds) {
        if (widget.inherits(kind)) {
            return true;
        }
    }
    return widget.focusPolicy() & Qt::TabFocus && !widget.focusProxy() &&
           !widget.inherits("QMdiSubWindow") && !widget.inherits("QAbstractScrollArea") &&
           !widget.isWindow();
}

QList<QWidget*> controls(QWidget& window) {
    QList<QWidget*> found;
    forEachWidget(window, [&](QWidget& widget) {
        if (isControl(widget)) {
            found << &widget;
        }
    });
    return found;
}

QList<QMenu*> menusOf(QWidget& window) {
    QList<QMenu*> found;
    if (auto* frame = qobject_cast<QMainWindow*>(&window)) {
        for (const QAction* title : frame->menuBar()->actions()) {
            if (title->menu() && title->isVisible()) {
                found << title->menu();
            }
        }
    }
    for (QMenu* menu : window.findChildren<QMenu*>()) {
        // What a pop-up or a sub-menu of a shown window offers; the frame's own menus stand in the
        // menu bar only while no child window does.
        const QWidget* owner = menu->parentWidget();
        if (owner && owner != &window && owner->isVisible() && !owner->inherits("QMenuBar") &&
            !owner->inherits("QMdiSubWindow") && !isOfQt(*menu)) {
            found << menu;
        }
    }
    std::set<QMenu*> once;
    found.removeIf([&](QMenu* menu) { return !once.insert(menu).second; });
    return found;
}

class Texts {
public:
    QList<SeenText> found;

    void add(const QString& owner, const QString& text) {
        if (!text.isEmpty()) {
            found << SeenText{owner, text};
        }
    }
    void addItems(const QWidget& owner, const QList<QAction*>& items) {
        for (const QAction* item : items) {
            if (!item->isSeparator() && item->isVisible() && !item->menu()) {
                const QString key = item->shortcut().toString(QKeySequence::PortableText);
                add(nameOf(item->objectName().isEmpty() ? static_cast<const QObject&>(owner)
                                                        : *item),
                    key.isEmpty() ? item->text() : item->text() + "|" + key);
            }
        }
    }
    void look(QWidget& widget) {
        const QString name = nameOf(widget);
        if (widget.isWindow() || widget.inherits("QMdiSubWindow")) {
            add(name, widget.windowTitle());
        }
        add(name, widget.toolTip());
        addOwnText(widget, name);
        const Qt::ContextMenuPolicy policy = widget.contextMenuPolicy();
        if (policy == Qt::ActionsContextMenu || policy == Qt::CustomContextMenu) {
            addItems(widget, widget.actions());
        }
    }

private:
    void addOwnText(QWidget& widget, const QString& name) {
        if (const auto* label = qobject_cast<QLabel*>(&widget)) {
            add(name, label->text());
        } else if (const auto* group = qobject_cast<QGroupBox*>(&widget)) {
            add(name, group->title());
        } else if (const auto* tool = qobject_cast<QToolButton*>(&widget)) {
            if (tool->toolButtonStyle() != Qt::ToolButtonIconOnly) {
                add(name, tool->text());
            }
        } else if (const auto* button = qobject_cast<QAbstractButton*>(&widget)) {
            add(name, button->text());
        } else if (const auto* box = qobject_cast<QLineEdit*>(&widget)) {
            add(name, box->placeholderText());
        } else if (const auto* text = qobject_cast<QTextEdit*>(&widget)) {
            add(name, text->placeholderText());
        } else if (const auto* bar = qobject_cast<QTabBar*>(&widget)) {
            for (int tab = 0; tab < bar->count(); ++tab) {
                add(nameOf(*bar->parentWidget()), bar->tabText(tab));
            }
        } else if (const auto* choice = qobject_cast<QComboBox*>(&widget)) {
            for (int i = 0; i < choice->count(); ++i) {
                add(name, choice->itemText(i));
            }
        }
    }
};

// Tab after Tab, until the way comes round.
std::set<QWidget*> tabOrder() {
    constexpr int longestWay = 300;
    std::set<QWidget*> visited;
    for (int step = 0; step < longestWay && QApplication::focusWidget(); ++step) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        visited.insert(QApplication::focusWidget());
    }
    return visited;
}

// Of the options of a frame the Tab key reaches one, the arrow keys the others.
bool isReachedByArrows(const QWidget& control, const std::set<QWidget*>& visited) {
    return control.inherits("QRadioButton") &&
           std::any_of(visited.begin(), visited.end(), [&](const QWidget* other) {
               return other && other->inherits("QRadioButton") &&
                      other->parentWidget() == control.parentWidget();
           });
}

void openCommands(QWidget& window) {
    for (QAction* action : window.findChildren<QAction*>()) {
        action->setEnabled(true);
    }
    for (QWidget* widget : window.findChildren<QWidget*>()) {
        widget->setEnabled(true);
    }
}

QKeySequence mnemonicOf(const QWidget& widget) {
    if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) {
        return QKeySequence::mnemonic(button->text());
    }
    if (const auto* label = qobject_cast<const QLabel*>(&widget)) {
        return label->buddy() ? QKeySequence::mnemonic(label->text()) : QKeySequence();
    }
    if (const auto* group = qobject_cast<const QGroupBox*>(&widget)) {
        return QKeySequence::mnemonic(group->title());
    }
    return {};
}

class Mnemonics {
public:
    QStringList shared;

    void begin() { taken_.clear(); }
    void take(const QString& owner, const QKeySequence& key) {
        if (key.isEmpty()) {
            return;
        }
        const auto [at, isNew] = taken_.emplace(key.toString(), owner);
        if (!isNew) {
            shared << at->second + " and " + owner + " share " + key.toString();
        }
    }

private:
    std::map<QString, QString> taken_;
};

bool fits(const QWidget& widget) {
    if (const auto* label = qobject_cast<const QLabel*>(&widget)) {
        if (label->text().isEmpty()) {
            return true;
        }
        return label->wordWrap() ? label->heightForWidth(label->width()) <= label->height()
                                 : label->sizeHint().width() <= label->width() &&
                                       label->sizeHint().height() <= label->height();
    }
    if (const auto* group = qobject_cast<const QGroupBox*>(&widget)) {
        return group->minimumSizeHint().width() <= group->width();
    }
    if (const auto* bar = qobject_cast<const QTabBar*>(&widget)) {
        return bar->sizeHint().width() <= bar->width();
    }
    if (widget.inherits("QAbstractButton") || widget.inherits("QAbstractSpinBox") ||
        widget.inherits("QMenuBar") || widget.inherits("QToolBar")) {
        return widget.sizeHint().width() <= widget.width() &&
               widget.sizeHint().height() <= widget.height();
    }
    return true;
}

} // namespace

QList<SeenText> seenTexts(QWidget& window) {
    Texts texts;
    forEachWidget(window, [&](QWidget& widget) { texts.look(widget); });
    for (QMenu* menu : menusOf(window)) {
        texts.add(nameOf(*menu), menu->title());
        texts.addItems(*menu, menu->actions());
    }
    return texts.found;
}

QStringList namelessControls(QWidget& window) {
    QStringList found;
    QList<QWidget*> all = controls(window);
    for (QMenu* menu : menusOf(window)) {
        all << menu;
    }
    for (QToolBar* bar : window.findChildren<QToolBar*>()) {
        all << bar;
    }
    for (QWidget* widget : all) {
        QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(widget);
        if (!spoken || spoken->text(QAccessible::Name).trimmed().isEmpty()) {
            found << nameOf(*widget);
        }
    }
    return found;
}

QStringList unreachable(QWidget& window) {
    openCommands(window);
    QStringList found;
    const QList<QWidget*> all = controls(window);
    std::set<QWidget*> visited;
    forEachPage(window, [&] { visited.merge(tabOrder()); });
    for (QWidget* control : all) {
        if (visited.count(control) == 0 && mnemonicOf(*control).isEmpty() &&
            !isReachedByArrows(*control, visited)) {
            found << nameOf(*control);
        }
    }
    if (auto* frame = qobject_cast<QMainWindow*>(&window)) {
        for (const QAction* title : frame->menuBar()->actions()) {
            if (title->isVisible() && QKeySequence::mnemonic(title->text()).isEmpty()) {
                found << nameOf(*title->menu());
            }
        }
    }
    return found;
}

QStringList sharedMnemonics(QWidget& window) {
    Mnemonics mnemonics;
    if (auto* frame = qobject_cast<QMainWindow*>(&window)) {
        for (const QAction* title : frame->menuBar()->actions()) {
            mnemonics.take(title->text(), QKeySequence::mnemonic(title->text()));
        }
    }
    forEachWidget(window, [&](QWidget& widget) {
        mnemonics.take(nameOf(widget), mnemonicOf(widget));
        if (const auto* bar = qobject_cast<const QTabBar*>(&widget)) {
            for (int tab = 0; tab < bar->count(); ++tab) {
                mnemonics.take(bar->tabText(tab), QKeySequence::mnemonic(bar->tabText(tab)));
            }
        }
    });
    for (QMenu* menu : menusOf(window)) {
        mnemonics.begin();
        for (const QAction* item : menu->actions()) {
            mnemonics.take(item->text(), QKeySequence::mnemonic(item->text()));
        }
    }
    return mnemonics.shared;
}

QStringList cutTexts(QWidget& window) {
    QStringList found;
    forEachWidget(window, [&](QWidget& widget) {
        const auto* label = qobject_cast<QLabel*>(&widget);
        const bool isToldElsewhere = label && label->text() == label->toolTip();
        if (!isToldElsewhere && !fits(widget)) {
            const QSize needs = widget.sizeHint();
            found << QStringLiteral("%1 needs %2x%3, has %4x%5")
                         .arg(nameOf(widget))
                         .arg(needs.width())
                         .arg(needs.height())
                         .arg(widget.width())
                         .arg(widget.height());
        }
    });
    return found;
}

} // namespace qvnd::test
