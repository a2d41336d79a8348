#include "tools/Session.h"

#include "tools/ProgramRun.h"

namespace qvnd::tools {

Session::Session(const GlobalOptions& options, Output& output)
    : options_(options), output_(output), messages_(output, options.yes), wait_(output) {}

Session::~Session() {
    if (program_) {
        program_->exit();
    }
}

ProgramRun& Session::program() {
    if (!program_) {
        auto run = std::make_unique<ProgramRun>(options_.home, messages_, wait_);
        if (!run->start()) {
            throw StartFailed();
        }
        program_ = std::move(run);
    }
    return *program_;
}

} // namespace qvnd::tools
