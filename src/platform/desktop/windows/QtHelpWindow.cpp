#include "platform/desktop/windows/QtHelpWindow.h"

#include "platform/desktop/windows/HelpCollection.h"
#include "platform/desktop/windows/HelpViewer.h"

#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace qvnd::desktop {

QtHelpWindow::QtHelpWindow(const QString& cacheFolder) : cacheFolder_(cacheFolder) {}

// The window looks into the collection, so it goes first.
QtHelpWindow::~QtHelpWindow() { viewer_.reset(); }

HelpViewer& QtHelpWindow::open(const QString& helpFile) {
    if (viewer_ && collection_->isOf(helpFile)) {
        return *viewer_;
    }
    viewer_.reset();
    collection_.reset();
    if (cacheFolder_.isEmpty()) {
        cacheFolder_ = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) +
                       u"/qvnd/help"_s;
    }
    collection_ = std::make_unique<HelpCollection>(helpFile, cacheFolder_);
    viewer_ = std::make_unique<HelpViewer>(*collection_);
    return *viewer_;
}

void QtHelpWindow::showContents(const QString& helpFile) { open(helpFile).showContents(); }

void QtHelpWindow::showIndex(const QString& helpFile) { open(helpFile).showIndex(); }

void QtHelpWindow::showPage(const QString& helpFile, const QString& window) {
    HelpViewer& viewer = open(helpFile);
    const QUrl page = collection_->pageOf(window);
    if (page.isEmpty()) {
        viewer.showContents();
    } else {
        viewer.showPage(page);
    }
}

} // namespace qvnd::desktop
