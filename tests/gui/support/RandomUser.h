#pragma once

#include "gui/support/DesktopWorld.h"
#include "platform/desktop/windows/WidgetFileDialogs.h"

#include <QDialog>
#include <QObject>
#include <QPointer>
#include <QScopedValueRollback>
#include <QSet>

#include <functional>
#include <optional>
#include <random>

class QFileDialog;
class QLineEdit;
class QMessageBox;

namespace qvnd::test {

// The dice of a script; the same seed throws the same again.
class Dice {
public:
    explicit Dice(unsigned seed) : engine_(seed) {}

    // 0 to below.
    int upTo(int below) { return std::uniform_int_distribution<int>(0, below - 1)(engine_); }
    bool in(int chances) { return upTo(chances) == 0; }
    template <typename List>
    auto oneOf(const List& list) {
        return list[static_cast<decltype(std::size(list))>(
            upTo(static_cast<int>(std::size(list))))];
    }

private:
    std::mt19937 engine_;
};

// Gives a file that is there, one that is not, or cancels; shows the real dialog now and then.
class RandomFileDialogs : public desktop::WidgetFileDialogs {
public:
    RandomFileDialogs(Dice& dice, const QStringList& files) : dice_(dice), files_(files) {}

    desktop::ChosenFile open(const desktop::OpenFileQuestion& question) override;

private:
    Dice& dice_;
    QStringList files_;
};

// Somebody who clicks, types, drags and drops without thinking, over all windows of the program,
// and starts it again when it has ended. Boxes, dialogs and menus that come up are answered in the
// same manner, and in the end closed; sometimes he reaches past them, as screen readers and the
// menu bars of some desktops do.
class RandomUser : public QObject {
public:
    // All of it outlives the user. `files` are what a file manager offers.
    RandomUser(DesktopWorld& world, Dice& dice, const QStringList& files);

    // Starts the program; false when Main failed.
    bool start();
    // One act, and everything that follows from it. What was done is answered, for a report.
    QString act();
    // Closes the frame and answers what comes of it.
    void close();
    // Object names of the windows, pop-ups and items of the frame that were used; a box or dialog
    // of the toolkit by its class. What stood behind a box does not count, and mnuBuild only when
    // it put another workbench in place.
    const QSet<QString>& reached() const { return reached_; }
    // How many nodes were dragged to where they were let go.
    int drags() const { return drags_; }
    // What escaped from a window, if anything.
    const QStringList& escaped() const { return escaped_; }

private:
    struct Deed {
        const char* name;
        int share;
        void (RandomUser::*run)();
    };
    static const std::vector<Deed>& deeds();

    // As long as it lives, what comes up is answered.
    struct Acting {
        explicit Acting(RandomUser& user);
        QScopedValueRollback<bool> was;
    };

    void clickTree();
    void clickAnywhere();
    void pressKey();
    void typeText();
    void drag();
    void dropFiles();
    void chooseCommand();
    void chooseOfFrame();
    void pressToolbar();
    void moveBar();
    void resize();
    void switchTab();
    void renameNode();
    void startAgain();
    void closeFrame();
    void openWindow();
    void readHelp();
    void readFindings();
    void readHistory();
    void read(const QStringList& windows);
    // While a generation lets events run.
    void meetProgress();

    void guarded(const std::function<void()>& work);
    void attend();
    void answer();
    void reach(const QWidget& window);
    void reachPast();
    // The pop-up or box that keeps the user from what is behind it; null when there is none.
    static QWidget* inFront();
    void clickSplash();
    void answerFileDialog(QFileDialog& dialog);
    void answerMenu(QWidget& popup);
    void answerDialog(QWidget& dialog);
    void answerMessage(QMessageBox& box);
    void useControl(QWidget& dialog);
    void clickIn(QWidget& widget);
    void type(QWidget& target, const QString& text);
    void hover(QWidget& target, QMimeData& data);
    bool letGo(QWidget& target, QMimeData& data);

    outline::OutlineView* randomTree();
    std::optional<QPoint> randomRow(outline::OutlineView& view);
    QString randomText();

    DesktopWorld& world_;
    Dice& dice_;
    QStringList files_;
    QStringList escaped_;
    QSet<QString> reached_;
    QPointer<QWidget> attended_;
    int patience_ = 0;
    int drags_ = 0;
    bool isActing_ = false;
    bool isAttending_ = false;
    bool isServed_ = false;
};

} // namespace qvnd::test
