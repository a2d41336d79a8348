#include "platform/registry/RegistryFile.h"

#include "platform/files/Paths.h"
#include "platform/files/TextDecoding.h"
#include "platform/registry/RegistryRoots.h"
#include "platform/registry/RegistryValues.h"

#include <QFile>

namespace qvnd::registry {

namespace {

QString pathOf(RootHandle root, const QString& subKey) {
    return QString::number(root, 16) + u'\\' + subKey.toLower();
}

// A key path as written in a header; empty when its root is none.
QString pathOf(const QString& keyPath) {
    const qsizetype cut = keyPath.indexOf(u'\\');
    const RootHandle root = RootFromName((cut < 0 ? keyPath : keyPath.left(cut)).toUpper());
    return root == 0 ? QString() : pathOf(root, cut < 0 ? QString() : keyPath.mid(cut + 1));
}

bool continues(const QString& line) {
    return line.endsWith(u'\\') && line.contains(QLatin1String("=hex"), Qt::CaseInsensitive);
}

} // namespace

RegistryFile RegistryFile::read(const QString& path) {
    QFile file(files::resolved(path));
    return file.open(QIODevice::ReadOnly) ? parse(file.readAll()) : RegistryFile();
}

RegistryFile RegistryFile::parse(const QByteArray& bytes) {
    RegistryFile parsed;
    QString text = files::decodeText(bytes);
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    parsed.lines_ = text.split(u'\n');
    parsed.ansi_ = parsed.lines_.front().trimmed() == QLatin1String("REGEDIT4");
    parsed.apply();
    return parsed;
}

void RegistryFile::apply() {
    QString current;
    for (qsizetype i = 0; i < lines_.size(); ++i) {
        QString statement = lines_[i].trimmed();
        if (statement.startsWith(u'[') && statement.endsWith(u']')) {
            enter(statement.mid(1, statement.size() - 2), current);
            continue;
        }
        bool more = continues(statement);
        while (more && i + 1 < lines_.size()) {
            const QString next = lines_[++i].trimmed();
            statement.chop(1);
            statement += next;
            more = next.endsWith(u'\\');
        }
        if (!current.isEmpty()) {
            assign(current, statement);
        }
    }
}

void RegistryFile::enter(const QString& header, QString& current) {
    if (header.startsWith(u'-')) {
        removeKey(pathOf(header.mid(1)));
        current.clear();
        return;
    }
    current = pathOf(header);
    // A key brings its parents along.
    for (QString path = current; !path.isEmpty(); path = path.left(path.lastIndexOf(u'\\'))) {
        keys_[path];
        if (!path.contains(u'\\')) {
            break;
        }
    }
}

void RegistryFile::removeKey(const QString& keyPath) {
    if (keyPath.isEmpty()) {
        return;
    }
    keys_.removeIf([&](const auto& at) {
        return at.key() == keyPath || at.key().startsWith(keyPath + u'\\');
    });
}

void RegistryFile::assign(const QString& keyPath, const QString& statement) {
    const auto assignment = parseAssignment(statement, ansi_);
    if (!assignment) {
        return;
    }
    if (assignment->value) {
        keys_[keyPath].insert(assignment->name.toLower(), *assignment->value);
    } else {
        keys_[keyPath].remove(assignment->name.toLower());
    }
}

bool RegistryFile::keyExists(RootHandle root, const QString& subKey) const {
    return subKey.isEmpty() ? root != 0 : keys_.contains(pathOf(root, subKey));
}

std::optional<Value> RegistryFile::value(RootHandle root, const QString& subKey,
                                         const QString& name) const {
    const auto key = keys_.constFind(pathOf(root, subKey));
    if (key == keys_.constEnd()) {
        return std::nullopt;
    }
    const auto found = key->constFind(name.toLower());
    return found == key->constEnd() ? std::nullopt : std::optional(*found);
}

} // namespace qvnd::registry
