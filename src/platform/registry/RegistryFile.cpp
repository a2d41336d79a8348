#include "platform/registry/RegistryFile.h"

#include "platform/error/RunTimeError.h"
#include "platform/files/Paths.h"
#include "platform/files/SafeReplace.h"
#include "platform/registry/RegistryRoots.h"

#include <QFile>

namespace qvnd::registry {

namespace {

constexpr qsizetype longestKey = 255; // characters, as the operating system has it

// Empty when the root is none.
QString pathOf(RootHandle root, const QString& subKey) {
    const QString name = NameOfRoot(root);
    return name.isEmpty() || subKey.isEmpty() ? name : name + u'\\' + subKey;
}

// Can a line of the file hold it?
bool fitsLine(const QString& text) {
    return !text.contains(u'\n') && !text.contains(u'\r') && !text.contains(u'\0');
}

bool isKeyName(const QString& subKey) {
    for (const QString& name : subKey.split(u'\\')) {
        if (name.isEmpty() || name.size() > longestKey) {
            return false;
        }
    }
    return fitsLine(subKey);
}

} // namespace

RegistryFile RegistryFile::read(const QString& path) {
    RegistryFile registry;
    registry.file_ = path;
    registry.load();
    return registry;
}

RegistryFile RegistryFile::parse(const QByteArray& bytes) {
    RegistryFile registry;
    registry.text_ = RegistryText::parse(bytes);
    return registry;
}

bool RegistryFile::load() {
    QFile file(files::resolved(file_));
    if (!file.exists()) {
        text_ = RegistryText();
        return true;
    }
    if (!file.open(QIODevice::ReadOnly)) {
        return false;
    }
    text_ = RegistryText::parse(file.readAll());
    return file.error() == QFileDevice::NoError;
}

KeyHandle RegistryFile::open(const QString& path, Access access) {
    open_.insert(++last_, {path, access});
    return last_;
}

Status RegistryFile::find(KeyHandle key, Access wanted, QString& path) const {
    const auto found = open_.constFind(key);
    if (found == open_.constEnd()) {
        return status::invalidHandle;
    }
    path = found->path;
    return (found->access & wanted) == wanted ? status::success : status::accessDenied;
}

Status RegistryFile::change(const Change& change) {
    if (file_.isEmpty()) {
        change(text_);
        return status::success;
    }
    if (!load()) {
        return status::cannotWrite;
    }
    const RegistryText before = text_;
    change(text_);
    try {
        files::writeWhole(file_, text_.bytes());
        return status::success;
    } catch (const RunTimeError&) {
        text_ = before;
        return status::cannotWrite;
    }
}

Status RegistryFile::openKey(RootHandle root, const QString& subKey, Access access,
                             KeyHandle& key) {
    const QString path = pathOf(root, subKey);
    if (path.isEmpty()) {
        return status::invalidHandle;
    }
    if (!subKey.isEmpty() && !text_.hasKey(path)) {
        return status::notFound;
    }
    key = open(path, access);
    return status::success;
}

Status RegistryFile::createKey(RootHandle root, const QString& subKey, KeyHandle& key) {
    const QString path = pathOf(root, subKey);
    if (path.isEmpty()) {
        return status::invalidHandle;
    }
    if (!subKey.isEmpty() && !text_.hasKey(path)) {
        if (!isKeyName(subKey)) {
            return status::invalidParameter;
        }
        const Status made = change([&](RegistryText& text) { text.addKey(path); });
        if (made != status::success) {
            return made;
        }
    }
    key = open(path, access::readWrite);
    return status::success;
}

Status RegistryFile::closeKey(KeyHandle key) {
    return open_.remove(key) ? status::success : status::invalidHandle;
}

Status RegistryFile::deleteKey(KeyHandle parent, const QString& subKey) {
    QString path;
    const Status found = find(parent, 0, path);
    if (found != status::success) {
        return found;
    }
    if (!isKeyName(subKey)) {
        return status::invalidParameter;
    }
    path += u'\\' + subKey;
    if (!text_.hasKey(path)) {
        return status::notFound;
    }
    return text_.hasSubKeys(path) ? status::accessDenied
                                  : change([&](RegistryText& text) { text.removeKey(path); });
}

Status RegistryFile::keySecurity(KeyHandle key) {
    QString path;
    return find(key, 0, path);
}

Status RegistryFile::queryValue(KeyHandle key, const QString& name, Value& value) {
    QString path;
    const Status found = find(key, access::queryValue, path);
    if (found != status::success) {
        return found;
    }
    const auto held = text_.value(path, name);
    if (held) {
        value = *held;
    }
    return held ? status::success : status::notFound;
}

Status RegistryFile::setValue(KeyHandle key, const QString& name, const Value& value) {
    QString path;
    const Status found = find(key, access::setValue, path);
    if (found != status::success) {
        return found;
    }
    return fitsLine(name) ? change([&](RegistryText& text) { text.setValue(path, name, value); })
                          : status::invalidParameter;
}

Status RegistryFile::deleteValue(KeyHandle key, const QString& name) {
    QString path;
    const Status found = find(key, access::setValue, path);
    if (found != status::success) {
        return found;
    }
    return text_.value(path, name)
               ? change([&](RegistryText& text) { text.removeValue(path, name); })
               : status::notFound;
}

Status RegistryFile::enumValues(KeyHandle key, std::vector<NamedValue>& values) {
    QString path;
    const Status found = find(key, access::queryValue, path);
    if (found == status::success) {
        values = text_.values(path);
    }
    return found;
}

} // namespace qvnd::registry
