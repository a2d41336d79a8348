#include "format/frmMultLevel.h"

using namespace Qt::StringLiterals;

namespace qvnd::format {

frmMultLevel::frmMultLevel(FormatSwitches& switches, desktop::MessageBoxes& messages)
    : controls(messages), Option1_0(controls, options, u"Option1(0)"),
      Option1_1(controls, options, u"Option1(1)"), Option1_2(controls, options, u"Option1(2)"),
      Text1_0(controls, u"Text1(0)"), Text1_1(controls, u"Text1(1)"), switches_(switches) {
    Text1_0.setText(u"第"_s);
    Text1_1.setText(u"章"_s);
    for (TextBox* box : {&Text1_0, &Text1_1}) {
        box->setEnabled(false);
    }
    for (OptionButton* option : options.options) {
        option->Click = [this] { choose(); };
    }
}

void frmMultLevel::choose() {
    Text1_0.setEnabled(Option1_2.value());
    Text1_1.setEnabled(Option1_2.value());
    if (Option1_2.value()) {
        takeTexts();
    }
}

void frmMultLevel::takeTexts() { switches_.gMultLevelText = Text1_0.text() + Text1_1.text(); }

void frmMultLevel::confirm() {
    for (std::size_t mode = 0; mode < options.options.size(); ++mode) {
        if (options.options[mode]->value()) {
            switches_.gMultLevelMode = static_cast<int>(mode);
        }
    }
    if (Option1_2.value()) {
        takeTexts();
    }
}

} // namespace qvnd::format
