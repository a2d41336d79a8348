#include "generate/assembly/ProgramFile.h"

#include "platform/files/Paths.h"

using namespace Qt::StringLiterals;

namespace qvnd::generate {

QString programFile(const QString& gAppPath, const QString& folder, const QString& name) {
    return files::withSeparator(files::withSeparator(gAppPath + u"sys"_s) + folder) + name;
}

} // namespace qvnd::generate
