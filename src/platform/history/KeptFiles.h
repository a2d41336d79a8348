#pragma once

#include <QDateTime>
#include <QSet>
#include <QString>
#include <QStringList>

#include <cstdint>

namespace qvnd::history {

// What tells whether a file is still the one that we left.
struct Stamp {
    std::int64_t size = -1; // -1 when there is no file; of a link, that of its text
    std::int64_t time = 0;  // of the last change, in the file system's own unit; behind a link
    friend bool operator==(const Stamp&, const Stamp&) = default;
};
Stamp stampOf(const QString& path);

// Whether a file, a folder or a link is there; a link need not lead to anything.
bool isAnythingAt(const QString& path);
// Whether a folder is there itself, and not by a link.
bool isFolderAt(const QString& path);

// The folder of the contents that steps took away. A content is named by its path below that
// folder, "57/3"; the constants stand for what has none. "57/1/" stands for a folder in which there
// is also what bears no valid name in the kept folder 57/1.
namespace content {
inline const QString absent = QStringLiteral("-"); // neither file nor folder
inline const QString folder = QStringLiteral("/"); // a folder; see isOfFolder
inline const QString onDisk = QStringLiteral("?"); // the file stands at its path, nowhere else
inline bool isOfFolder(const QString& name) { return name.endsWith(u'/'); }
} // namespace content

// A symbolic link is a content of its own: where it leads to is not looked at.
//
// Errors of all operations: RunTimeError as in FileSystemObject. A content has its name only when
// it is whole, also when the process is killed meanwhile.
class KeptFiles {
public:
    explicit KeptFiles(const QString& folder);

    QString pathOf(const QString& name) const;
    bool has(const QString& name) const;
    // True for a name that stands for a file here.
    static bool isKept(const QString& name);
    // Whether it can be put at a path: it is there, and may be read.
    bool canPut(const QString& name) const;
    // The greatest number of a step that has contents here, also of one that nobody knows.
    std::int64_t lastStep() const;
    void removeStep(std::int64_t step) const;
    // Takes away the copies that a killed process has left half.
    void dropUnfinished(std::int64_t step) const;
    // Removes all contents but these, and the folders that are empty then.
    void removeAllBut(const QSet<QString>& needed) const;

    // A second name for the file's bytes, which nobody may write to from then on; a copy where the
    // file has other names already, or the file system no such names.
    void link(const QString& file, const QString& name) const;
    void copy(const QString& file, const QString& name) const;
    // The file or folder itself. False for a folder on another file system, which is copied.
    bool take(const QString& path, const QString& name) const;
    // Back to the path, which then has the very file that was taken.
    void giveBack(const QString& name, const QString& path) const;
    // Puts a copy of the content at the path, whole or not at all; nothing else is touched. It has
    // the date that the content had and may be read by no more people, but it can be written.
    void put(const QString& name, const QString& path) const;
    // Makes the folder, with what of the content bears no valid name.
    void putFolder(const QString& name, const QString& path) const;
    // Whether such a content is still there.
    bool hasFolder(const QString& name) const;
    // Removes what the content has put into the folder, where nothing has changed it since.
    void emptyFolder(const QString& name, const QString& path) const;
    // Whether the path still has the very bytes that were linked.
    bool isLinkedTo(const QString& name, const QString& path) const;
    // Whether the content is a copy of what is at the path now, which has not been written since.
    bool isCopyOf(const QString& name, const QString& path) const;
    // Whether the path has a file with what the content holds.
    bool isCopiedTo(const QString& name, const QString& path) const;
    // Removes what a process has left beside the paths while it wrote files for them and was
    // killed. It began at `since`, and its last sign of life is of `last`. The user's are files
    // from before, files whose ending is a word ("backup"), copies of what stands at a path, and
    // files from more than a minute behind unless they bear a name that only the Word engine gives.
    // They stay; without a time all do. Each folder is read once.
    static void removeUnfinished(const QStringList& paths, const QDateTime& since,
                                 const QDateTime& last);
    // Removes the file; a folder only when it is empty, as it may have what another program put
    // there. Error 70 for a file that cannot be removed.
    static void takeAway(const QString& path);
    // With the folders around it. Error 75.
    static void makeFolder(const QString& path);
    // Bytes of all contents, and of one; 0 for one that is not there.
    std::int64_t size() const;
    std::int64_t sizeOf(const QString& name) const;

private:
    // The path of the content, in a folder that is there.
    QString roomFor(const QString& name) const;

    QString folder_;
};

} // namespace qvnd::history
