#pragma once

#include "format/SettingsRows.h"
#include "format/controls/ChoiceControls.h"
#include "format/controls/TextControls.h"
#include "store/modMain.h"

namespace qvnd::format {

// The page "页眉、页脚及目录": the one row of 页眉页脚表.
//
// Without a row the first write makes one of fixed words and the texts of the controls, whatever
// the boxes, options and the leader show, the one that was just clicked included; the next
// HeaderFooterRefresh brings the row level with the controls.
class HeaderFooterPage {
public:
    HeaderFooterPage(modMain& state, Controls& dialog);

    CheckBox chkHeader;     // 是否带页眉
    TextBox TxtHeaderCon;   // 页眉内容
    ComboBox cmbHeaderFont; // 页眉字体
    ComboBox cmbHeaderSize; // 页眉字号
    OptionFrame Frame4;     // 页眉位置
    OptionButton optHeaderLeft;
    OptionButton optHeaderMiddle;
    OptionButton optHeaderRight;
    CheckBox chkfooter;     // 是否带页脚
    TextBox TxtFooterCon;   // 页脚内容
    ComboBox cmbFooterFont; // 页脚字体
    ComboBox cmbFooterSize; // 页脚字号
    OptionFrame Frame5;     // 页脚位置
    OptionButton optFooterLeft;
    OptionButton optFooterMiddle;
    OptionButton optFooterRight;
    ComboBox cmbPageClass; // 显示级别
    ComboBox cmbPageSign;  // 制表样式
    CheckBox chkPageIsNot; // 是否显示页码
    CheckBox chkPageRight; // 是否右对齐

    // The row into the controls, or what the dialog falls back to without one, which writes
    // nothing. A statement that fails is passed over.
    void Load();
    // A row of a library into the controls. Boxes and options that really change write their field
    // into the working row.
    void showLibrary(const jet::Recordset& row);
    // Writes every field of the row from the controls, or makes the row. Errors of the store pass.
    void HeaderFooterRefresh();

private:
    void connect();
    void writesOnClick(CheckBox& box, QStringView field);
    void writesHeaderPosition(OptionButton& option, QStringView word);
    void writesFooterPosition(OptionButton& option, QStringView word);
    void showRow(const jet::Recordset& row);
    void fallBack();
    void showLeader(const QString& word);
    void setAll(jet::Recordset& row);
    void setHeaderTexts(jet::Recordset& row) const;
    void setFooterTexts(jet::Recordset& row) const;
    void setNew(jet::Recordset& row) const;
    void writeField(QStringView field, const QString& value);
    PositionOptions headerOptions();
    PositionOptions footerOptions();

    // While the fallbacks are shown.
    bool writesNothing_ = false;
    modMain& state_;
};

} // namespace qvnd::format
