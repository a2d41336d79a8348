#pragma once

#include "plans/ConvertOldData.h"
#include "platform/desktop/MessageBoxes.h"

#include <QStringList>

#include <functional>

namespace qvnd::plans {

// The conversion dialog's work without its window: what it lists are the folders whose database is
// a Jet file of an older installation, and showing it converts them all.
class LegacyConversion : public ConversionDialog {
public:
    // `update` adopts the converted folders of a type (bType) and lists the library anew.
    LegacyConversion(modMain& state, desktop::MessageBoxes& messages,
                     std::function<void(int bType)> update);

    QStringList ListBox;

    void FillListBox(const QString& path) override;
    // A folder that cannot be converted stays as it is, gets a message, and does not stop the
    // others. What was done is in modMain::LegacyTakeovers.
    void Show() override;

private:
    modMain& state_;
    desktop::MessageBoxes& messages_;
    std::function<void(int bType)> update_;
};

} // namespace qvnd::plans
