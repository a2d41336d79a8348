#pragma once

#include "platform/jet/dialect/Syntax.h"
#include "platform/jet/engine/Session.h"

namespace qvnd::jet {

// Carries out the statements that return no rows, on the database of one session. The errors are
// those of Database::Execute.
class CommandRunner {
public:
    explicit CommandRunner(Session& session);

    void operator()(const SelectInto& command);
    void operator()(const InsertInto& command);
    void operator()(const DeleteFrom& command);
    void operator()(const DropTable& command);
    // A query returns rows and is not for Execute: error 3065.
    [[noreturn]] void operator()(const Query& command);

private:
    // The file that stands behind IN, or the session's own.
    std::shared_ptr<StoreFile> Target(const std::optional<QString>& file);

    Session& session_;
    StoreFile& file_;
};

} // namespace qvnd::jet
