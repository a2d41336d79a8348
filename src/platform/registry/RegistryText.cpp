#include "platform/registry/RegistryText.h"

#include "platform/registry/RegistryRoots.h"
#include "platform/registry/RegistryValues.h"

#include <algorithm>

namespace qvnd::registry {

namespace {

const QString version5 = QStringLiteral("Windows Registry Editor Version 5.00");

// In lower case; empty when its root is none.
QString normal(const QString& keyPath) {
    const QString root = keyPath.section(u'\\', 0, 0).toUpper();
    return RootFromName(root) == 0 ? QString() : keyPath.toLower();
}

// A value's bytes never begin so: where one is cut off at its end, what follows is a line of its
// own.
bool beginsStatement(const QString& line) {
    return line.startsWith(u'[') || line.startsWith(u'"') || line.startsWith(u'@');
}

bool isHeader(const QString& line) { return line.startsWith(u'[') && line.endsWith(u']'); }

bool continues(const QString& line) {
    return line.endsWith(u'\\') && line.contains(QLatin1String("=hex"), Qt::CaseInsensitive);
}

} // namespace

RegistryText::RegistryText() { lines_.replace(0, 0, {version5, QString()}); }

RegistryText RegistryText::parse(const QByteArray& bytes) {
    RegistryText text;
    text.lines_ = files::TextLines::of(bytes);
    text.read();
    return text;
}

void RegistryText::read() {
    sections_.clear();
    keys_.clear();
    ansi_ = lines_.count() > 0 && lines_.at(0).trimmed() == QLatin1String("REGEDIT4");
    for (qsizetype i = 0; i < lines_.count(); ++i) {
        QString statement = lines_.at(i).trimmed();
        if (isHeader(statement)) {
            sections_.push_back({{}, i, i + 1, {}});
            enter(statement.mid(1, statement.size() - 2));
            continue;
        }
        const qsizetype first = i;
        bool more = continues(statement);
        while (more && i + 1 < lines_.count() && !beginsStatement(lines_.at(i + 1).trimmed())) {
            const QString next = lines_.at(++i).trimmed();
            statement.chop(1);
            statement += next;
            more = next.endsWith(u'\\');
        }
        assign(statement, first, i - first + 1);
    }
}

void RegistryText::enter(const QString& header) {
    const auto section = static_cast<qsizetype>(sections_.size()) - 1;
    if (header.startsWith(u'-')) {
        forget(normal(header.mid(1)));
        return;
    }
    const QString key = normal(header);
    sections_.back().key = key;
    if (!key.isEmpty()) {
        keys_[key].section = section;
    }
}

void RegistryText::assign(const QString& statement, qsizetype first, qsizetype count) {
    if (sections_.empty()) {
        return;
    }
    Section& section = sections_.back();
    section.end = first + count;
    const auto assignment = parseAssignment(statement, ansi_);
    if (section.key.isEmpty() || !assignment) {
        return;
    }
    const QString name = assignment->name.toLower();
    section.statements.push_back({first, count, name});
    auto& values = keys_[section.key].values;
    if (assignment->value) {
        const qsizetype order = values.contains(name) ? values[name].order : first;
        values.insert(name, {{assignment->name, *assignment->value}, order});
    } else {
        values.remove(name);
    }
}

void RegistryText::forget(const QString& key) {
    if (key.isEmpty()) {
        return;
    }
    const QString below = key + u'\\';
    keys_.remove(key);
    for (auto at = keys_.lowerBound(below); at != keys_.end() && at.key().startsWith(below);) {
        at = keys_.erase(at);
    }
    const qsizetype cut = key.lastIndexOf(u'\\');
    if (cut >= 0) {
        keys_[key.left(cut)];
    }
}

bool RegistryText::hasKey(const QString& keyPath) const {
    return keys_.contains(normal(keyPath)) || hasSubKeys(keyPath);
}

bool RegistryText::hasSubKeys(const QString& keyPath) const {
    const QString below = normal(keyPath) + u'\\';
    const auto at = keys_.lowerBound(below);
    return at != keys_.end() && at.key().startsWith(below);
}

std::optional<Value> RegistryText::value(const QString& keyPath, const QString& name) const {
    const auto key = keys_.constFind(normal(keyPath));
    if (key == keys_.constEnd()) {
        return std::nullopt;
    }
    const auto found = key->values.constFind(name.toLower());
    return found == key->values.constEnd() ? std::nullopt : std::optional(found->named.value);
}

std::vector<NamedValue> RegistryText::values(const QString& keyPath) const {
    const Key key = keys_.value(normal(keyPath));
    std::vector<Entry> entries(key.values.cbegin(), key.values.cend());
    std::sort(entries.begin(), entries.end(),
              [](const Entry& a, const Entry& b) { return a.order < b.order; });
    std::vector<NamedValue> values;
    values.reserve(entries.size());
    for (const Entry& entry : entries) {
        values.push_back(entry.named);
    }
    return values;
}

void RegistryText::addKey(const QString& keyPath) {
    QStringList lines = {u'[' + keyPath + u']'};
    if (lines_.count() == 0) {
        lines = {version5, QString(), lines[0]};
    } else if (!lines_.at(lines_.count() - 1).trimmed().isEmpty()) {
        lines.prepend(QString());
    }
    lines_.replace(lines_.count(), 0, lines);
    read();
}

qsizetype RegistryText::sectionFor(const QString& keyPath) {
    const auto key = keys_.constFind(normal(keyPath));
    if (key == keys_.constEnd() || key->section < 0) {
        addKey(keyPath);
    }
    return keys_.value(normal(keyPath)).section;
}

std::vector<RegistryText::Statement> RegistryText::statementsOf(const QString& key,
                                                                const QString& name) const {
    std::vector<Statement> found;
    for (const Section& section : sections_) {
        for (const Statement& statement : section.statements) {
            if (section.key == key && statement.name == name) {
                found.push_back(statement);
            }
        }
    }
    return found;
}

void RegistryText::setValue(const QString& keyPath, const QString& name, const Value& value) {
    const QStringList lines = formatAssignment(name, value, ansi_);
    if (this->value(keyPath, name)) {
        // The last is the one that counts.
        const Statement last = statementsOf(normal(keyPath), name.toLower()).back();
        lines_.replace(last.first, last.count, lines);
    } else if (const qsizetype found = sectionFor(keyPath); found >= 0) {
        const Section section = sections_[static_cast<std::size_t>(found)];
        qsizetype at = section.end;
        while (at > section.header + 1 && lines_.at(at - 1).trimmed().isEmpty()) {
            --at;
        }
        lines_.replace(at, 0, lines);
    }
    read();
}

void RegistryText::removeStatements(std::vector<Statement> statements) {
    // From the last on, so that the places of the others hold.
    std::reverse(statements.begin(), statements.end());
    for (const Statement& statement : statements) {
        lines_.replace(statement.first, statement.count, {});
    }
    read();
}

void RegistryText::removeValue(const QString& keyPath, const QString& name) {
    // All of them: with the last alone gone an earlier one would count again.
    removeStatements(statementsOf(normal(keyPath), name.toLower()));
}

void RegistryText::removeKey(const QString& keyPath) {
    const QString key = normal(keyPath);
    std::vector<Statement> lines;
    for (const Section& section : sections_) {
        if (section.key == key && !key.isEmpty()) {
            lines.push_back({section.header, 1, {}});
            lines.insert(lines.end(), section.statements.begin(), section.statements.end());
        }
    }
    removeStatements(std::move(lines));
    const qsizetype cut = keyPath.lastIndexOf(u'\\');
    if (cut >= 0 && !hasKey(keyPath.left(cut)) && keyPath.left(cut).contains(u'\\')) {
        addKey(keyPath.left(cut));
    }
}

} // namespace qvnd::registry
