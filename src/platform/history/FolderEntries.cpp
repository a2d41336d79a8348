#include "platform/history/FolderEntries.h"

#include "platform/files/FileErrors.h"
#include "platform/files/Paths.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <system_error>
#include <vector>

namespace qvnd::history {

namespace fs = std::filesystem;

namespace {

// Of an entry while it comes. No plan can bear such a name, nor any file that the program makes.
constexpr auto comingName = ".~coming";

void checkAt(std::error_code failed, const fs::path& path) {
    if (failed) {
        files::throwFileError(failed, files::fromPath(path));
    }
}

std::vector<fs::path> allIn(const fs::path& folder) {
    std::vector<fs::path> paths;
    std::error_code failed;
    for (fs::directory_iterator at(folder, failed), end; !failed && at != end;
         at.increment(failed)) {
        paths.push_back(at->path());
    }
    checkAt(failed, folder);
    return paths;
}

std::vector<fs::path> unnamedIn(const fs::path& folder) {
    std::vector<fs::path> paths = allIn(folder);
    std::erase_if(paths, isNamed);
    return paths;
}

void copyEntry(const fs::path& from, const fs::path& to);

void copyFolder(const fs::path& from, const fs::path& to) {
    std::error_code failed;
    fs::create_directory(to, failed);
    checkAt(failed, from);
    for (const fs::path& entry : allIn(from)) {
        copyEntry(entry, to / entry.filename());
    }
}

void copyEntry(const fs::path& from, const fs::path& to) {
    std::error_code failed;
    switch (fs::symlink_status(from, failed).type()) {
    case fs::file_type::symlink:
        fs::copy_symlink(from, to, failed);
        break;
    case fs::file_type::directory:
        copyFolder(from, to);
        break;
    case fs::file_type::regular:
        fs::copy_file(from, to, failed);
        if (!failed) {
            const fs::file_time_type time = fs::last_write_time(from, failed);
            fs::last_write_time(to, time, failed);
            failed.clear(); // the date alone
        }
        break;
    default:
        break;
    }
    checkAt(failed, from);
}

bool haveSameBytes(const fs::path& one, const fs::path& other) {
    std::error_code failed;
    if (fs::file_size(one, failed) != fs::file_size(other, failed) || failed) {
        return false;
    }
    using Bytes = std::istreambuf_iterator<char>;
    std::ifstream first(one, std::ios::binary);
    std::ifstream second(other, std::ios::binary);
    return first && second && std::equal(Bytes(first), Bytes(), Bytes(second), Bytes());
}

// Whether all that is under the one name is under the other as well.
bool isHeldBy(const fs::path& one, const fs::path& other) {
    std::error_code failed;
    const fs::file_type type = fs::symlink_status(one, failed).type();
    if (fs::symlink_status(other, failed).type() != type) {
        return false;
    }
    if (type == fs::file_type::symlink) {
        return fs::read_symlink(one, failed) == fs::read_symlink(other, failed);
    }
    if (type == fs::file_type::regular) {
        return haveSameBytes(one, other);
    }
    if (type != fs::file_type::directory) {
        return false;
    }
    const std::vector<fs::path> entries = allIn(one);
    return std::all_of(entries.begin(), entries.end(), [&](const fs::path& entry) {
        return isHeldBy(entry, other / entry.filename());
    });
}

} // namespace

FolderEntries entriesOf(const QString& folder) {
    FolderEntries entries;
    for (const fs::path& entry : allIn(folder.toStdU16String())) {
        std::error_code failed;
        const fs::file_type type = fs::symlink_status(entry, failed).type();
        if (!isNamed(entry)) {
            entries.hasUnnamed = true;
        } else if (type == fs::file_type::directory) {
            entries.folders << files::fromPath(entry.filename());
        } else if (type == fs::file_type::regular || type == fs::file_type::symlink) {
            entries.files << files::fromPath(entry.filename());
        }
    }
    return entries;
}

bool isNamed(const fs::path& entry) {
    const fs::path name = entry.filename();
    return fs::path(files::fromPath(name).toStdU16String()).native() == name.native();
}

void copyUnnamed(const fs::path& from, const fs::path& to) {
    const fs::path coming = to / comingName;
    std::error_code failed;
    fs::remove_all(coming, failed); // left by a killed process
    for (const fs::path& entry : unnamedIn(from)) {
        const fs::path wanted = to / entry.filename();
        if (fs::exists(fs::symlink_status(wanted, failed))) {
            continue;
        }
        copyEntry(entry, coming);
        if (fs::exists(fs::symlink_status(coming, failed))) {
            fs::rename(coming, wanted, failed);
            checkAt(failed, to);
        }
    }
}

void removeUnnamed(const fs::path& folder, const fs::path& kept) {
    std::error_code ignored; // what stays is only in the way of the folder's end
    fs::remove_all(folder / comingName, ignored); // left by a killed process
    for (const fs::path& entry : unnamedIn(folder)) {
        if (isHeldBy(entry, kept / entry.filename())) {
            fs::remove_all(entry, ignored);
        }
    }
}

} // namespace qvnd::history
