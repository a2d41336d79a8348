#pragma once

#include "format/CoverPage.h"
#include "format/FormatServices.h"
#include "format/HeaderFooterPage.h"
#include "format/HeadingPage.h"
#include "format/PageSetupPage.h"
#include "format/SettingsChanges.h"

#include <optional>

// The frames of the dialog that keep saved settings.
namespace qvnd::format {

// "标书设置库". Showing a library puts its tables into the controls; it does not copy it into the
// working tables. What boxes and options that really change write on the way is written all the
// same, and `shown` keeps it. Of the headings a library restores the controls of one level alone.
class SettingLibraryFrame {
public:
    struct Pages {
        HeadingPage& headings;
        PageSetupPage& page;
        HeaderFooterPage& headerFooter;
    };

    SettingLibraryFrame(modMain& state, Controls& dialog, const FormatServices& services,
                        const Pages& pages, ShownLibraries& shown);

    ListBox lstSet;
    CheckBox chkSet; // read by 确定 alone
    Button cmdSaveSet;
    Button cmdDeleteSet;

    // Fills the list, and later selects the first entry and opens or closes what needs one: two
    // steps of the dialog's load. A statement that fails is passed over.
    void fillList();
    void selectFirst();

private:
    void save();
    void removeSelected();
    void showSelected();
    void showInPages(const QString& library);

    modMain& state_;
    FormatServices services_;
    Pages pages_;
    ShownLibraries& shown_;
};

// "封面格式库". Showing a library writes the name of its picture, which `shown` keeps, and nothing
// else.
class CoverLibraryFrame {
public:
    CoverLibraryFrame(modMain& state, Controls& dialog, const FormatServices& services,
                      CoverPage& cover, ShownLibraries& shown);

    ListBox lstcover;
    CheckBox chkCover; // excludes chkSelf
    Button cmdSaveCover;
    Button cmdDeleteCover;

    void Load();

private:
    void save();
    void removeSelected();
    void showSelected();

    modMain& state_;
    FormatServices services_;
    CoverPage& cover_;
    ShownLibraries& shown_;
};

// "自定义库": documents of the user's own in place of a cover.
class CustomPageFrame {
public:
    CustomPageFrame(modMain& state, Controls& dialog, const FormatServices& services);

    ListBox lstSelf;
    CheckBox chkSelf; // excludes chkCover
    Button cmdSelfBld;
    Button cmdSelfDel;

    void Load();
    // Stores the selected page as the one in use, if chkSelf is checked.
    void storeIfChecked();

private:
    std::optional<QString> askForNewName();
    void create();
    void removeSelected();
    void openSelected();

    modMain& state_;
    FormatServices services_;
};

} // namespace qvnd::format
