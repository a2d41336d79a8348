#pragma once

#include <QString>

#include <filesystem>

namespace qvnd::files {

// Whether the file's owner may write to it; of a link, to the link itself.
bool isWritable(const std::filesystem::path& file);
// A file below the folder that is write-protected, by its path; empty when there is none.
QString writeProtectedIn(const QString& folder);

} // namespace qvnd::files
