#pragma once

#include <QString>
#include <QStringList>

#include <filesystem>

namespace qvnd::history {

// What lies in a folder. Names that are no valid text, as archives leave them that were unpacked
// with another encoding, can be told by no path of the history; what bears one goes and comes with
// the folder around it. Pipes and the like hold nothing and are passed over. Errors of all
// operations: RunTimeError as in FileSystemObject.
struct FolderEntries {
    QStringList folders; // names
    QStringList files;   // and links
    bool hasUnnamed = false;
};
FolderEntries entriesOf(const QString& folder);

// Whether the name of the entry is valid text.
bool isNamed(const std::filesystem::path& entry);
// Copies the entries without valid names, each whole or not at all; what is there already stays.
void copyUnnamed(const std::filesystem::path& from, const std::filesystem::path& to);
// Removes those from the folder that `kept` holds just so.
void removeUnnamed(const std::filesystem::path& folder, const std::filesystem::path& kept);

} // namespace qvnd::history
