#include "tools/Session.h"

namespace qvnd::tools {

Session::Session(const GlobalOptions& options, Output& output)
    : options_(options), output_(output), messages_(output, options.yes) {}

} // namespace qvnd::tools
