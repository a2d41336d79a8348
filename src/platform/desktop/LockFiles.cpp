#include "platform/desktop/LockFiles.h"

#include "platform/desktop/Processes.h"
#include "platform/files/DocumentNames.h"
#include "platform/files/Paths.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace qvnd::desktop {

namespace {

// The part of a lock that matters is short; more is not read.
constexpr qint64 longestLock = 64 * 1024;

const QLatin1String lockBegin(".~lock.");
const QLatin1String ownerBegin("~$");
// So many first characters the owner file's name may lack.
constexpr int mostLeftOut = 2;

bool hasOwnerFile(const QString& document, const QStringList& names) {
    for (int leftOut = 0; leftOut <= mostLeftOut; ++leftOut) {
        if (names.contains(ownerBegin + document.mid(leftOut), Qt::CaseInsensitive)) {
            return true;
        }
    }
    return false;
}

bool isOfficeSuite(const QStringList& commandLine) {
    const QString program = QFileInfo(commandLine.value(0)).fileName();
    return program.startsWith(QLatin1String("soffice"), Qt::CaseInsensitive) ||
           program.startsWith(QLatin1String("oosplash"), Qt::CaseInsensitive);
}

// The profile that a suite was started with; empty for the user's standard one.
QString profileOf(const QStringList& commandLine) {
    const QLatin1String option("-env:UserInstallation=");
    for (const QString& argument : commandLine) {
        if (argument.startsWith(option)) {
            return argument.mid(option.size());
        }
    }
    return {};
}

bool isStandardProfile(const QString& profile) {
    return profile.isEmpty() || profile.contains(QLatin1String("libreoffice/"));
}

bool sameProfile(const QString& a, const QString& b) {
    const auto bare = [](const QString& url) { return url.endsWith(u'/') ? url.chopped(1) : url; };
    return bare(a) == bare(b);
}

} // namespace

std::optional<OfficeLock> parseOfficeLock(const QString& text) {
    QStringList parts(1);
    for (qsizetype i = 0; i < text.size() && text[i] != u';'; ++i) {
        if (text[i] == u',') {
            parts << QString();
            continue;
        }
        if (text[i] == u'\\' && i + 1 < text.size()) {
            ++i;
        }
        parts.back() += text[i];
    }
    constexpr int host = 2;
    constexpr int profile = 4;
    if (parts.size() <= host) {
        return std::nullopt;
    }
    return OfficeLock{parts[host], parts.value(profile)};
}

LockFiles::LockFiles(Processes& processes) : processes_(processes) {}

bool LockFiles::isAlive(const QString& lockFile) {
    QFile file(lockFile);
    if (!file.open(QIODevice::ReadOnly)) {
        return true;
    }
    const auto lock = parseOfficeLock(QString::fromUtf8(file.read(longestLock)));
    if (!lock || lock->host.compare(processes_.hostName(), Qt::CaseInsensitive) != 0) {
        return true;
    }
    const auto running = processes_.commandLines();
    return std::any_of(running.begin(), running.end(), [&](const QStringList& commandLine) {
        const QString profile = profileOf(commandLine);
        return isOfficeSuite(commandLine) &&
               (profile.isEmpty() ? isStandardProfile(lock->profile)
                                  : sameProfile(profile, lock->profile));
    });
}

bool LockFiles::isOpen(const QString& folder, const QString& document, const QStringList& names) {
    const QString lock = lockBegin + document + u'#';
    if (names.contains(lock)) {
        return isAlive(files::withSeparator(folder) + lock);
    }
    return hasOwnerFile(document, names);
}

bool LockFiles::isOpenIn(const QStringList& folders) {
    for (const QString& written : folders) {
        const QString folder = files::resolved(written);
        const QStringList names = QDir(folder).entryList(QDir::Files | QDir::Hidden | QDir::System);
        const bool locked = std::any_of(names.begin(), names.end(), [](const QString& name) {
            return name.startsWith(lockBegin) || name.startsWith(ownerBegin);
        });
        if (locked && std::any_of(names.begin(), names.end(), [&](const QString& name) {
                return files::isTextDocument(name) && !name.startsWith(ownerBegin) &&
                       isOpen(folder, name, names);
            })) {
            return true;
        }
    }
    return false;
}

bool LockFiles::isAnyOpenIn(const QString& folder) { return isOpenIn({folder}); }

bool LockFiles::isDocumentOpen(const QString& path) {
    const QFileInfo document(files::resolved(path));
    const QString name = document.fileName();
    if (!document.isFile() || !files::isTextDocument(name) || name.startsWith(ownerBegin)) {
        return false;
    }
    const QString folder = files::withSeparator(document.path());
    QStringList names = {lockBegin + name + u'#'};
    for (int leftOut = 0; leftOut <= mostLeftOut; ++leftOut) {
        names << ownerBegin + name.mid(leftOut);
    }
    names.erase(
        std::remove_if(names.begin(), names.end(),
                       [&](const QString& beside) { return !QFileInfo::exists(folder + beside); }),
        names.end());
    return isOpen(folder, name, names);
}

} // namespace qvnd::desktop
