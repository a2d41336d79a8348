#include "outline/PlanFolder.h"

#include "platform/error/RunTimeError.h"
#include "platform/files/FileErrors.h"
#include "store/modMain.h"

#include <algorithm>

namespace qvnd::outline {

QString planFolder(const modMain& state, const QString& plan) {
    // A system may drop blanks and points at the end of a name, and the name with them.
    const bool isNothing =
        std::all_of(plan.begin(), plan.end(), [](QChar c) { return c == u'.' || c.isSpace(); });
    if (isNothing || plan.contains(u'/') || plan.contains(u'\\')) {
        files::throwFileError(error::pathNotFound, state.gUserTplPath + plan);
    }
    return state.gUserTplPath + plan;
}

} // namespace qvnd::outline
