#include "platform/registry/RegOperation.h"

#include "platform/files/DiskFileSystem.h"
#include "platform/files/Paths.h"
#include "platform/files/PublicFonction.h"
#include "platform/registry/RegistryValues.h"

#include <QStringDecoder>

namespace qvnd::registry {

namespace {

// Without the terminator.
QString textIn(const Value& value) {
    QString text = QStringDecoder(QStringConverter::Utf16LE, QStringConverter::Flag::Stateless)
                       .decode(value.data);
    if (text.endsWith(u'\0')) {
        text.chop(1);
    }
    return text;
}

QString dataOf(const Value& value) {
    if (value.type == ValueType::text) {
        return textIn(value);
    }
    QStringList bytes;
    if (value.type == ValueType::binary || value.type == ValueType::number) {
        for (const char byte : value.data) {
            bytes << QString::number(static_cast<unsigned char>(byte));
        }
    }
    return bytes.join(u' ');
}

std::uint8_t answer(files::MadePath made) { return static_cast<std::uint8_t>(made); }

} // namespace

QString RegOperation::ErrorText(Status status) {
    switch (status) {
    case 2:
    case 1010:
        return QStringLiteral("Bad Key Name");
    case 4:
    case 1012:
        return QStringLiteral("Can't Read Key");
    case 5:
        return QStringLiteral("Access to this key is denied");
    case 8:
    case 14:
        return QStringLiteral("Out of memory");
    case 87:
        return QStringLiteral("Invalid Parameter");
    case 234:
        return QStringLiteral("There is more data than the buffer has been allocated to hold.");
    case 1009:
    case 1015:
        return QStringLiteral("The Registry Database is corrupt!");
    case 1011:
        return QStringLiteral("Can't Open Key");
    case 1013:
        return QStringLiteral("Can't Write Key");
    default:
        return QStringLiteral("Undefined Error Code:  ") + QString::number(status);
    }
}

void RegOperation::DumpValues(ByReference keyPath, desktop::MessageBoxes& messages) {
    if (!parse(*keyPath) || !open(*keyPath, access::read)) {
        return;
    }
    std::vector<NamedValue> values;
    closeWorking(registry_.enumValues(working_, values));
    QString text;
    for (const NamedValue& value : values) {
        text += value.name + u'\r' + dataOf(value.value) + u'\r';
    }
    text += QLatin1String("abc\rbbb\rccc\r");
    messages.tell(text + u' ' + QString::number(text.size()));
}

// As files::MakePath, but for one case that the two tell apart on the way, not in the end: a first
// level that is there with nothing behind it is the whole work.
std::uint8_t RegOperation::MCrDir(const QString& path, const QString& base) {
    const QChar separator = files::separator();
    QString left = path;
    if (left.endsWith(separator)) {
        left.chop(1);
    }
    const QString folder = files::withSeparator(base);
    if (!files::folderExists(files::withoutSeparator(folder))) {
        return answer(files::MadePath::baseMissing);
    }
    if (files::folderExists(folder + left)) {
        return answer(files::MadePath::alreadyThere);
    }
    const qsizetype cut = left.indexOf(separator);
    const QString first = cut < 0 ? left : left.left(cut);
    files::DiskFileSystem folders;
    if (cut < 0 || !files::folderExists(folder + first)) {
        folders.CreateFolder(folder + first);
    }
    if (cut >= 0 && cut + 1 < left.size()) {
        MCrDir(left.mid(cut + 1), folder + first + separator);
    }
    return answer(files::MadePath::made);
}

} // namespace qvnd::registry
