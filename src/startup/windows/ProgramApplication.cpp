#include "startup/windows/ProgramApplication.h"

#include "platform/error/UnexpectedErrors.h"

#include <exception>

using namespace Qt::StringLiterals;

namespace qvnd::startup {

bool ProgramApplication::notify(QObject* receiver, QEvent* event) {
    try {
        return QApplication::notify(receiver, event);
    } catch (const std::exception& failure) {
        if (messages_ == nullptr) {
            throw;
        }
        const QString text = desktop::descriptionOf(runTimeErrorOf(failure));
        if (!told_.contains(text)) {
            told_.insert(text);
            messages_->tell(text, desktop::Icon::exclamation, u"提示"_s);
        }
        return true;
    }
}

} // namespace qvnd::startup
