#pragma once

#include "platform/desktop/windows/HelpSearch.h"

#include <QMainWindow>
#include <QUrl>

#include <memory>

class QLabel;
class QLineEdit;
class QListWidget;
class QTabWidget;

namespace qvnd::desktop {

class HelpCollection;
class HelpTextBrowser;

// The help window: on the left contents, index and search, on the right the page. It can be used
// beside a modal dialog that asked for help, and outlives it.
class HelpViewer : public QMainWindow {
    Q_OBJECT

public:
    // The collection outlives the window.
    explicit HelpViewer(const HelpCollection& collection);

    // Each brings the window to front.
    void showContents();
    void showIndex();
    void showSearch();
    void showPage(const QUrl& page);

    HelpTextBrowser& browser() { return *browser_; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    enum Tab { contents, index, search };

    void buildToolbar();
    QAction* addCommand(const QString& name, const QString& text, const QKeySequence& key);
    QWidget* buildContents();
    QWidget* buildIndex();
    QWidget* buildSearch();
    void buildPanes();
    void showTab(Tab tab);
    void bringToFront();
    void standAbove(QWidget* modal);
    void setSource(const QUrl& page);
    void showTitle();
    void selectInContents(const QUrl& page);
    void runSearch();
    const HelpSearch& pages();

    const HelpCollection& collection_;
    std::unique_ptr<HelpSearch> pages_;
    HelpTextBrowser* browser_;
    QTabWidget* tabs_;
    QLineEdit* indexFilter_ = nullptr;
    QLineEdit* words_ = nullptr;
    QListWidget* hits_ = nullptr;
    QLabel* count_ = nullptr;
};

} // namespace qvnd::desktop
