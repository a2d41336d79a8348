#pragma once

#include "format/controls/ChoiceControls.h"
#include "format/controls/TextControls.h"
#include "store/FormatSwitches.h"

namespace qvnd::format {

// The dialog "多级标题设置" without its window: how the label around a multi-level number is made.
// It opens with its first texts and no option each time, whatever the switches say.
class frmMultLevel {
public:
    frmMultLevel(FormatSwitches& switches, desktop::MessageBoxes& messages);

    Controls controls;
    OptionFrame options;
    OptionButton Option1_0; // "沿用以前的标题前、后缀"
    OptionButton Option1_1; // "不沿用以前的标题前、后缀"
    OptionButton Option1_2; // "只第一级设为:"
    // Before and behind the number of level 1. Together they are one text, which generation splits
    // after its first character whatever stands in each box.
    TextBox Text1_0;
    TextBox Text1_1;

    // 确定: the selected option becomes gMultLevelMode, and of the third the texts become
    // gMultLevelText; with no option selected nothing changes. The dialog then closes, as it does
    // by 取消, which takes nothing back that a click on an option has set.
    void confirm();

private:
    void choose();
    void takeTexts();

    FormatSwitches& switches_;
};

} // namespace qvnd::format
