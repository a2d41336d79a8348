#pragma once

#include "format/SettingsRows.h"
#include "format/controls/ChoiceControls.h"
#include "format/controls/PreviewControls.h"
#include "format/controls/TextControls.h"
#include "platform/desktop/FileDialogs.h"
#include "platform/desktop/MessageBoxes.h"
#include "store/modMain.h"

namespace qvnd::format {

// The cover in miniature: three labels at half their size, and between the first and the second a
// picture, drawn over Image1 whatever its own size, of which Picture1 shows a part. In twips.
struct CoverPreviewBox {
    static constexpr int pictureWidth = 615;
    static constexpr int pictureHeight = 735;
    static constexpr int imageLeft = -135;
    static constexpr int imageTop = -135;
    static constexpr int imageWidth = 855;
    static constexpr int imageHeight = 975;
};

// The tab "封面设置" but for its libraries: the one row of 封面表, and the picture files in the
// folder 图片库, of which the table keeps the bare names.
class CoverPage {
public:
    CoverPage(modMain& state, Controls& dialog, desktop::MessageBoxes& messages,
              desktop::FileDialogs& fileDialogs);

    TextBox TxtPrjName;   // 工程名称
    ComboBox cmbPrjFont;  // 工程字体
    ComboBox cmbPrjSize;  // 工程字号
    TextBox TxtOffName;   // 单位名称
    ComboBox cmbOffFont;  // 单位字体
    ComboBox cmbOffSize;  // 单位字号
    DatePicker cmbDate;   // 日期
    ComboBox cmbDateFont; // 日期字体
    ComboBox cmbDateSize; // 日期字号
    ComboBox cmbPic;      // 图片; its name can be erased and not typed
    Button cmdBrowse;     // brings a picture into the folder
    TextBox TxtWidth;     // 图片宽度, centimetres
    TextBox TxtHeight;    // 图片高度, centimetres
    Label lblPrjName;
    Image Image1;
    Label lblOffName;
    Label lblDate;
    // What the preview does not show: generation sets 单位名称, and the empty lines around it, in
    // the size of 工程名称. Empty while both sizes are the same.
    Label lblOffNote;

    // The names of the open plan into the row, the row into the controls, or what the dialog falls
    // back to without a row, which writes nothing; then the fonts of the labels. A statement that
    // fails is passed over. The date is not read: it stays today's.
    void Load();
    // A row of a cover library into the controls. The name of its picture is written into the
    // working row, and nothing else. Errors pass.
    void showLibrary(const jet::Recordset& row);
    // Writes every field of the row from the controls, or makes the row; an empty size leaves its
    // field alone. Errors pass.
    void CoverRefresh();

private:
    void connect(desktop::MessageBoxes& messages);
    void connectFont(ComboBox& font, Label& label);
    void connectSize(ComboBox& size, Label& label);
    void takeNamesOfPlan(jet::Recordset& cover);
    void showRow(const jet::Recordset& row);
    void fallBack();
    void showFonts();
    void noteOfficeSize();
    void setAll(jet::Recordset& row);
    void pictureChanged();
    void pictureClicked();
    void browse(desktop::FileDialogs& fileDialogs);
    void bringIn(const desktop::ChosenFile& chosen);
    void replaceSecond(const QString& fileTitle);
    QString fileOf(const QString& picture) const;

    modMain& state_;
};

} // namespace qvnd::format
