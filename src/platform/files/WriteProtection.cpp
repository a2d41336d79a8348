#include "platform/files/WriteProtection.h"

#include "platform/files/Paths.h"

#include <system_error>

namespace qvnd::files {

namespace fs = std::filesystem;

bool isWritable(const fs::path& file) {
    std::error_code failed;
    const fs::perms permissions = fs::symlink_status(file, failed).permissions();
    return (permissions & fs::perms::owner_write) != fs::perms::none;
}

QString writeProtectedIn(const QString& folder) {
    std::error_code failed;
    for (fs::recursive_directory_iterator at(toPath(folder), failed), end; !failed && at != end;
         at.increment(failed)) {
        if (at->symlink_status(failed).type() == fs::file_type::regular &&
            !isWritable(at->path())) {
            return fromPath(at->path());
        }
    }
    return {};
}

} // namespace qvnd::files
