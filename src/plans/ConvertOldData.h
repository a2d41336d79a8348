#pragma once

#include "platform/desktop/InputBoxes.h"
#include "platform/desktop/MessageBoxes.h"
#include "store/modMain.h"

#include <QString>
#include <QStringList>

#include <functional>

namespace qvnd::plans {

// The dialog that brings plans or templates of older installations in. The command fills it and
// shows it.
class ConversionDialog {
public:
    virtual ~ConversionDialog() = default;

    int bType = 0; // 1 plans, 2 templates
    QString sPath; // the folder to look through
    QString Text1; // the central database
    QString Text2; // the folder as shown

    // Lists what the folder holds.
    virtual void FillListBox(const QString& path) = 0;
    // Modal: returns when the user is done with it.
    virtual void Show() = 0;
};

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

// 转换标书: asks whether plans ("1") or templates ("2") are to be converted and shows the dialog
// for them. Any other answer, an empty one included, ends it.
void convertOldData(const modMain& state, desktop::InputBoxes& input, ConversionDialog& dialog);

// The two paragraphs that warn of converting without need, for whoever offers the conversion to a
// user. The command does not show them.
QStringList conversionNotice();

} // namespace qvnd::plans
