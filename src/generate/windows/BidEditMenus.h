#pragma once

#include <QAction>
#include <QList>
#include <QMenu>

namespace qvnd::generate {

// The menus of the plan edit window. Members bear the names of the controls, and so do the objects.
// The menus belong to the window that is given; the frame puts those of menuBar() into its menu
// bar.
class BidEditMenus {
public:
    explicit BidEditMenus(QWidget& window);

    QList<QMenu*> menuBar() const { return {mnuBidEdit, mnudatadoc, mnuCheckReport}; }

    QMenu* mnuBidEdit;
    QAction* mnuBidSet;
    QAction* mnuBul;
    QAction* mnuBuildbid;
    QAction* mnuBrowsebid;
    QAction* mnuspace1;
    QAction* mnuBack;

    QMenu* mnudatadoc;
    QAction* mnuBidData;
    QAction* mnuBidLike;
    QAction* mnuOpenDoc;

    QMenu* mnuCheckReport;
    QAction* mnuCheck;
    QAction* mnuReport;
    QAction* mnuPdf;

    // The pop-up of TrvEdit.
    QMenu* mnuOpen;
    QAction* mnuDocOpen;
    QAction* mnuBrowseDoc;
};

} // namespace qvnd::generate
