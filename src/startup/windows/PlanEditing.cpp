#include "startup/windows/PlanEditing.h"

#include "platform/preview/windows/PagePane.h"

namespace qvnd::startup {

namespace {

// The suite as commands wait for it, with a profile of its own. The windows stay alive meanwhile,
// and a long run that is cancelled, or a stop, ends the suite's work.
office::OfficeSuite suite(desktop::Events& events, desktop::LongRun& longRun,
                          const std::function<bool()>& isStopped) {
    return office::OfficeSuite(office::OfficeSuite::cacheFolder() + QStringLiteral("/office"),
                               office::OfficeSuite::installedProgram(),
                               [&events, &longRun, isStopped] {
                                   events.doEvents();
                                   return longRun.isCancelled() || isStopped();
                               });
}

} // namespace

DesktopPlanEditing::DesktopPlanEditing(desktop::MessageBoxes& messages, desktop::Events& events,
                                       desktop::LongRun& longRun,
                                       preview::PageConversion& conversion,
                                       const std::function<bool()>& isStopped)
    : conversion_(conversion),
      generation_(messages, suite(events, longRun, isStopped), longRun, events, isStopped),
      pdf_(suite(events, longRun, isStopped)) {}

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
