#include "startup/WordProcessor.h"

#include "platform/desktop/BesideEvents.h"

namespace qvnd::startup {

namespace {

// What is asked whether to stop serves the desktop meanwhile.
word::LongWork askingNowAndThen(const office::OfficeSuite::Stop& stop) {
    if (!stop) {
        return nullptr;
    }
    return [stop](const std::function<void()>& work) {
        desktop::runBesideEvents(work, [&] { stop(); });
    };
}

} // namespace

WordProcessor::WordProcessor(desktop::MessageBoxes& messages, const office::OfficeSuite::Stop& stop)
    : losses_(messages), unsaved_(messages),
      suite_(officeProfile_.path(), office::OfficeSuite::installedProgram(), stop),
      engine_(
          {pages_, losses_, unsaved_, &pictures_, &documents_, nullptr, askingNowAndThen(stop)}),
      factory_(engine_, suite_) {}

} // namespace qvnd::startup
