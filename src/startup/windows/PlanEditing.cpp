#include "startup/windows/PlanEditing.h"

#include "platform/preview/windows/PagePane.h"

namespace qvnd::startup {

namespace {

// The suite as commands wait for it, with a profile of its own. The windows stay alive meanwhile,
// and a long run that is cancelled ends the suite's work.
office::OfficeSuite suite(desktop::Events& events, desktop::LongRun& longRun) {
    return office::OfficeSuite(office::OfficeSuite::cacheFolder() + QStringLiteral("/office"),
                               office::OfficeSuite::installedProgram(), [&events, &longRun] {
                                   events.doEvents();
                                   return longRun.isCancelled();
                               });
}

} // namespace

DesktopPlanEditing::DesktopPlanEditing(desktop::MessageBoxes& messages, desktop::Events& events,
                                       desktop::LongRun& longRun,
                                       preview::PageConversion& conversion)
    : conversion_(conversion), generation_(messages, suite(events, longRun), longRun, events),
      pdf_(suite(events, longRun)) {}

PlanEditing DesktopPlanEditing::services() {
    return {generation_.factory(),
            openDocuments_,
            windows_,
            openDocuments_,
            pdf_,
            generation_,
            generation_.documents(),
            [this] {
                auto* pane = new preview::PagePane(conversion_);
                return DocumentView{pane, pane};
            }};
}

} // namespace qvnd::startup
