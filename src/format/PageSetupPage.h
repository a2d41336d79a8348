#pragma once

#include "format/SettingsRows.h"
#include "format/controls/ChoiceControls.h"
#include "format/controls/TextControls.h"
#include "platform/desktop/MessageBoxes.h"
#include "store/modMain.h"

#include <array>

namespace qvnd::format {

// The page "页面、正文设置": the one row of 页面设置表. Lengths are centimetres.
class PageSetupPage {
public:
    PageSetupPage(modMain& state, Controls& dialog, desktop::MessageBoxes& messages);

    TextBox txtPageupdis;    // 页边距上
    TextBox TxtPageDownDis;  // 页边距下
    TextBox TxtPageLeftDis;  // 页边距左
    TextBox TxtPageRightdis; // 页边距右
    TextBox Txtheader;       // 距页眉
    TextBox TxtFooter;       // 距页脚
    TextBox TxtBind;         // 装订距离
    OptionFrame Frame19;     // 装订位置
    OptionButton optSide;
    OptionButton optTop;
    ComboBox cmbTextFont; // 正文字体
    ComboBox cmbTextSize; // 正文字号

    // The row into the controls, or what the dialog falls back to without one. A statement that
    // fails is passed over.
    void Load();
    // A row of a library into the controls. A gutter side that really changes runs PageFresh, from
    // the boxes as they stand at that moment. Errors pass: 3021 without a row.
    void showLibrary(const jet::Recordset& row);
    // Writes the row from the controls; an empty box leaves its field alone. Errors pass: 3021
    // without a row, 13 for a box that holds no number.
    void PageFresh();

private:
    void connect(desktop::MessageBoxes& messages);
    std::array<TextBox*, 7> lengths();
    void showRow(const jet::Recordset& row);
    void showGutterSide(const jet::Recordset& row);
    void fallBack();

    modMain& state_;
};

// The page "其  它": how a document under a document appears. None of it reaches a table.
class ChildDocumentPage {
public:
    ChildDocumentPage(modMain& state, Controls& dialog);

    OptionFrame Frame22;
    OptionButton Option1_0; // "Option1(0)": a heading like any other
    OptionButton Option1_1; // "Option1(1)": a numbered plain paragraph, gChildDocAsNumber
    // A plain drop-down list: the numbering style, empty until the user picks one.
    ComboBox cboBianHao;
    // The indent in characters, 0 to 100.
    TextBox txtInde;

private:
    void chooseForm();
    void keepWithinBounds();

    modMain& state_;
};

} // namespace qvnd::format
