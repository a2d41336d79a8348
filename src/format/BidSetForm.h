#pragma once

#include "format/CoverPage.h"
#include "format/FormatServices.h"
#include "format/HeaderFooterPage.h"
#include "format/HeadingPage.h"
#include "format/LibraryPages.h"
#include "format/PageSetupPage.h"
#include "store/modMain.h"

namespace qvnd::format {

// The controls of the format dialog (frmBidSet) for as long as it is loaded. The dialog is a live
// editor: a control writes to its table when its value is committed, and generation reads those
// tables. 确定 records only which libraries apply; 取消 undoes nothing.
class BidSetForm {
public:
    // Loads the dialog: fills the lists, shows the tables' rows, and writes on the way what the
    // boxes and options that change write. 工程名称 and 单位名称 of 封面表 become those of the open
    // plan, 是否右对齐 becomes "是", gChildDocAsNumber false. A statement that fails is passed
    // over; the form always comes up. Without a printer the user is told.
    BidSetForm(modMain& state, const FormatServices& services);

    Controls controls;
    HeadingPage headings;
    HeaderFooterPage headerFooter;
    PageSetupPage page;
    ChildDocumentPage childDocuments;
    CoverPage cover;
    ShownLibraries shownLibraries;
    SettingLibraryFrame settingLibrary;
    CoverLibraryFrame coverLibrary;
    CustomPageFrame customPage;

    // 确定: takes chkBlackLine over and rewrites 是否设置表 from chkSet, chkCover and chkSelf. True
    // when the dialog is to be hidden; after an error, which is told, it stays.
    bool cmdDecide();

private:
    void connect();
    void Load();
    void fillFonts();
    void fillLists();
    QStringList offeredFonts();

    modMain& state_;
    FormatServices services_;
};

} // namespace qvnd::format
