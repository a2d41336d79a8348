#pragma once

#include "generate/driver/WordSession.h"
#include "platform/desktop/MessageBoxes.h"
#include "platform/desktop/ProgressDialog.h"
#include "platform/error/UnexpectedErrors.h"

#include <QString>

#include <exception>
#include <vector>

namespace qvnd::generate {

// Thrown to leave a run for its stop path.
struct LeaveForStopPath {};

// The generate command's one answer to a failing statement, by the error's number:
//   0, 462              leave for the stop path
//   91, 3078, 3265      nothing
//   5941, 0x800706BE    a box that asks to leave Word alone
//   any other           a box with the error's description; what is no run-time error is one that
//                       runTimeErrorOf() words
// A box takes the progress dialog off the screen and brings Word forward afterwards. Whatever
// does not leave goes on with the next statement. Errors of the last kind are kept for the report.
class ErrorRoutine {
public:
    // All outlive the object; `told` takes the descriptions.
    ErrorRoutine(desktop::MessageBoxes& messages, desktop::ProgressDialog& dlgTB, WordSession& word,
                 std::vector<QString>& told)
        : messages_(messages), dlgTB_(dlgTB), word_(word), told_(told) {}

    // Runs one statement under this routine. True when it ended without an error.
    template <class Statement>
    bool operator()(Statement statement) {
        try {
            statement();
            return true;
        } catch (const std::exception& failure) {
            reactTo(runTimeErrorOf(failure));
            return false;
        }
    }

private:
    void reactTo(const RunTimeError& error);
    void showAndGoOn(const QString& text, desktop::Icon icon);

    desktop::MessageBoxes& messages_;
    desktop::ProgressDialog& dlgTB_;
    WordSession& word_;
    std::vector<QString>& told_;
};

} // namespace qvnd::generate
