#include "startup/WordProcessor.h"

#include <utility>

namespace qvnd::startup {

WordProcessor::WordProcessor(desktop::MessageBoxes& messages, office::OfficeSuite::Stop stop)
    : losses_(messages), unsaved_(messages),
      suite_(officeProfile_.path(), office::OfficeSuite::installedProgram(), std::move(stop)),
      engine_({pages_, losses_, unsaved_, &pictures_, &documents_}), factory_(engine_, suite_) {}

} // namespace qvnd::startup
