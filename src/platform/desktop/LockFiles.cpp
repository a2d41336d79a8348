#include "platform/desktop/LockFiles.h"

#include "platform/desktop/Processes.h"
#include "platform/files/Paths.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace qvnd::desktop {

namespace {

// The part of a lock that matters is short; more is not read.
constexpr qint64 longestLock = 64 * 1024;

bool isTextDocument(const QString& name) {
    static const QStringList extensions = {"doc", "dot", "docx", "docm", "rtf", "odt", "wps"};
    return extensions.contains(QFileInfo(name).suffix(), Qt::CaseInsensitive);
}

bool hasOwnerFile(const QString& document, const QStringList& names) {
    for (int leftOut = 0; leftOut <= 2; ++leftOut) {
        if (names.contains(QLatin1String("~$") + document.mid(leftOut), Qt::CaseInsensitive)) {
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
    const QString lock = QLatin1String(".~lock.") + document + u'#';
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
            return name.startsWith(QLatin1String(".~lock.")) ||
                   name.startsWith(QLatin1String("~$"));
        });
        if (locked && std::any_of(names.begin(), names.end(), [&](const QString& name) {
                return isTextDocument(name) && !name.startsWith(QLatin1String("~$")) &&
                       isOpen(folder, name, names);
            })) {
            return true;
        }
    }
    return false;
}

} // namespace qvnd::desktop
