#pragma once

#include "format/FormatLists.h"
#include "format/SettingsRows.h"
#include "format/controls/ChoiceControls.h"
#include "format/controls/PreviewControls.h"
#include "format/controls/TextControls.h"
#include "platform/jet/Recordset.h"
#include "store/modMain.h"

namespace qvnd::format {

// The page "章节设置": one row of 章节设置表 for each heading level, found by 级别 and never by its
// place, and the switches of multi-level numbering.
//
// A pick, a click on a box or an option, and leaving a text box write at once. Typing moves the
// preview alone.
class HeadingPage {
public:
    HeadingPage(modMain& state, Controls& dialog);

    ComboBox cmbClass;       // 级别
    ComboBox cmbChapterFont; // 字体
    ComboBox cmbChapterSize; // 字号
    TextBox Txtformer;       // 前缀
    ComboBox cmbMiddle;      // 中缀, and 序号标志 that belongs to it
    TextBox Txtback;         // 后缀
    OptionFrame Frame12;     // 位置
    OptionButton optLeft;
    OptionButton optMiddle;
    OptionButton optRight;
    CheckBox chkHead;      // 置页头
    CheckBox chkIsNot;     // 带该级标题
    CheckBox chkMultLevel; // gMultLevelOn
    Button Command1;       // opens frmMultLevel, which its Click is left to
    CheckBox chkBlackLine; // gBlankLineAroundTitle, taken over by 确定 alone
    Label lblModel;        // the heading at 0.7 of its size
    Label lblTree;         // the name of the level

    // The row of level 1 into the controls, or what the dialog falls back to without one, which
    // writes nothing. A statement that fails is passed over. The preview moves by a new text of
    // Txtformer or Txtback alone, so without affixes it keeps its first texts.
    void Load();
    // The fields of a row of a heading table into the controls, in their order. Boxes and options
    // that really change write their field into the row of the level shown.
    void show(const jet::Recordset& row, Failing failing);
    // Writes every field of the row of the level shown, or makes the row. Errors of the store pass.
    void ChapterRefresh();

private:
    void connect();
    void connectPosition(OptionButton& option, TextAlign alignment, QStringView word);
    void showLevel();
    void showFields(const jet::Recordset& row, const Statements& attempt);
    void showMissingLevel();
    void fallBack();
    void setAll(jet::Recordset& row, RowIs there);
    void writeField(QStringView field, const QString& value);
    QString headingText() const;
    void compose();
    void composeByTitleBox();

    bool isLoading_ = false;
    // While the fallbacks are shown.
    bool writesNothing_ = false;
    modMain& state_;
};

} // namespace qvnd::format
