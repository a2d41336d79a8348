#include "generate/driver/ErrorRoutine.h"

#include "platform/desktop/MessageBoxes.h"
#include "platform/error/IgnoringErrors.h"

using namespace Qt::StringLiterals;

namespace qvnd::generate {

void ErrorRoutine::reactTo(const RunTimeError& error) {
    switch (error.number()) {
    case 0:
    case error::automationServerGone:
        throw LeaveForStopPath();
    case error::objectNotSet:
    case error::tableNotFound:
    case error::itemNotFound:
        return;
    case error::memberNotFound:
    case error::remoteCallFailed:
        showAndGoOn(u"请选择整个Word文档，在生成标书的时候请不要单击或关闭Word程序！"_s,
                    desktop::Icon::information);
        return;
    default:
        told_.push_back(desktop::descriptionOf(error));
        showAndGoOn(told_.back(), desktop::Icon::none);
    }
}

void ErrorRoutine::showAndGoOn(const QString& text, desktop::Icon icon) {
    dlgTB_.hide();
    messages_.tell(text, icon);
    dlgTB_.show();
    ignoringErrors([&] { word_.application().Activate(); });
}

} // namespace qvnd::generate
