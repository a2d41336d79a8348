#include "startup/windows/PlanEditing.h"

#include "platform/preview/windows/PreviewPane.h"

#include <QStandardPaths>

namespace qvnd::startup {

namespace {

// The suite as commands wait for it, with a profile of its own. The windows stay alive meanwhile.
office::OfficeSuite suite(desktop::Events& events) {
    const QString cache = QStandardPaths::writableLocation(QStandardPaths::CacheLocation);
    return office::OfficeSuite(cache + QStringLiteral("/office"),
                               office::OfficeSuite::installedProgram(), [&events] {
                                   events.doEvents();
                                   return false;
                               });
}

} // namespace

DesktopPlanEditing::DesktopPlanEditing(desktop::MessageBoxes& messages, desktop::Events& events,
                                       preview::PageConversion& conversion)
    : conversion_(conversion), generation_(messages, suite(events)), pdf_(suite(events)) {}

PlanEditing DesktopPlanEditing::services() {
    return {
        generation_.factory(), openDocuments_, windows_, openDocuments_, pdf_, generation_, [this] {
            auto* pane = new preview::PreviewPane(conversion_);
            return DocumentView{pane, pane};
        }};
}

} // namespace qvnd::startup
