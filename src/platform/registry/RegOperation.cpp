#include "platform/registry/RegOperation.h"

#include "platform/files/Trim.h"
#include "platform/registry/RegistryRoots.h"
#include "platform/registry/RegistryValues.h"

namespace qvnd::registry {

namespace {

constexpr qsizetype bufferLength = 255;
constexpr qsizetype numberLength = 4;

Value numberValue(std::int32_t number) {
    Value value{ValueType::number, {}};
    for (int shift = 0; shift < 32; shift += 8) {
        value.data += static_cast<char>(static_cast<std::uint32_t>(number) >> shift);
    }
    return value;
}

std::int32_t numberIn(const QByteArray& bytes) {
    std::uint32_t number = 0;
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        number |= std::uint32_t{static_cast<unsigned char>(bytes[i])} << (8 * i);
    }
    return static_cast<std::int32_t>(number);
}

const QString error = QStringLiteral("Error");

} // namespace

RegOperation::RegOperation(Registry& registry) : registry_(registry) {}

RegOperation::~RegOperation() { closeCurrent(); }

bool RegOperation::ParseKeyPath(QString& keyPath, RootHandle& root) {
    const qsizetype cut = keyPath.indexOf(u'\\');
    if (!keyPath.startsWith(QLatin1String("HKEY_")) || keyPath.endsWith(u'\\')) {
        return false;
    }
    root = RootFromName(cut < 0 ? keyPath : keyPath.left(cut));
    keyPath = cut < 0 ? QString() : keyPath.mid(cut + 1);
    return true;
}

bool RegOperation::parse(QString& keyPath) {
    root_ = 0;
    return ParseKeyPath(keyPath, root_) && root_ != 0;
}

bool RegOperation::open(const QString& subKey, Access access) {
    status_ = registry_.openKey(root_, subKey, access, working_);
    return status_ == status::success;
}

// Closing is not asked how it went; what counts is the work before it.
bool RegOperation::closeWorking(Status result) {
    registry_.closeKey(working_);
    working_ = 0;
    status_ = result;
    return result == status::success;
}

void RegOperation::closeCurrent() {
    if (current_ != 0) {
        registry_.closeKey(current_);
        current_ = 0;
    }
}

QString RegOperation::GetStringValueA(ByReference keyPath, const QString& valueName) {
    if (!parse(*keyPath)) {
        return {};
    }
    if (!open(*keyPath, access::read)) {
        return error;
    }
    Value value;
    status_ = registry_.queryValue(working_, valueName, value);
    if (status_ != status::success) {
        return error;
    }
    closeWorking(status_);
    const QString buffer = textOf(value).left(bufferLength).leftJustified(bufferLength, u' ');
    // Blanks alone are trimmed: the terminator stays and is the character that goes.
    QString text = files::Trim(buffer);
    text.chop(1);
    return text;
}

bool RegOperation::CreateKey(ByReference keyPath, bool close) {
    if (!parse(*keyPath)) {
        return false;
    }
    closeCurrent();
    status_ = registry_.createKey(root_, *keyPath, current_);
    if (status_ != status::success || !close) {
        return false;
    }
    closeCurrent();
    return true;
}

bool RegOperation::OpenKeyF(ByReference keyPath, ByReference mode) {
    if (!parse(*keyPath)) {
        return false;
    }
    closeCurrent();
    *mode = mode->toUpper();
    const Access access =
        *mode == u"R" ? access::read : (*mode == u"W" ? access::write : access::readWrite);
    status_ = registry_.openKey(root_, *keyPath, access, current_);
    return status_ == status::success;
}

bool RegOperation::set(KeyHandle key, const QString& valueName, const Value& value) {
    status_ = registry_.setValue(key, valueName, value);
    return status_ == status::success;
}

bool RegOperation::setAt(QString& keyPath, const QString& valueName, const Value& value) {
    if (!parse(keyPath) || !open(keyPath, access::write)) {
        return false;
    }
    set(working_, valueName, value);
    return closeWorking(status_);
}

bool RegOperation::SetDWORDValueA(ByReference keyPath, const QString& valueName,
                                  std::int32_t value) {
    return setAt(*keyPath, valueName, numberValue(value));
}

bool RegOperation::SetDWORDVal(const QString& valueName, std::int32_t value) {
    return set(current_, valueName, numberValue(value));
}

RegOperation::Number RegOperation::GetDWORDValueA(ByReference keyPath, const QString& valueName) {
    if (!parse(*keyPath)) {
        return QString();
    }
    if (!open(*keyPath, access::read)) {
        return error;
    }
    Value value;
    Status read = registry_.queryValue(working_, valueName, value);
    const QByteArray bytes = ansiBytes(value);
    if (read == status::success && bytes.size() > numberLength) {
        read = status::moreData;
    }
    return closeWorking(read) ? Number(numberIn(bytes)) : Number(error);
}

bool RegOperation::SetBinaryValueA(ByReference keyPath, const QString& valueName,
                                   const QByteArray& bytes) {
    return setAt(*keyPath, valueName, {ValueType::binary, bytes});
}

bool RegOperation::SetBinaryVal(const QString& valueName, const QByteArray& bytes) {
    return set(current_, valueName, {ValueType::binary, bytes});
}

QString RegOperation::GetBinaryValueA(ByReference keyPath, const QString& valueName) {
    if (!parse(*keyPath)) {
        return {};
    }
    if (!open(*keyPath, access::read)) {
        return error;
    }
    Value value;
    const Status read = registry_.queryValue(working_, valueName, value);
    return closeWorking(read) ? QString::fromLatin1(ansiBytes(value)) : error;
}

bool RegOperation::DeleteKey(ByReference keyPath, const QString& subKey) {
    if (!parse(*keyPath) || !open(*keyPath, access::write)) {
        return false;
    }
    closeWorking(registry_.deleteKey(working_, subKey));
    return true;
}

bool RegOperation::SetStringValueA(ByReference keyPath, const QString& valueName,
                                   const QString& value) {
    return setAt(*keyPath, valueName, {ValueType::text, utf16Bytes(value)});
}

bool RegOperation::SetStringVal(const QString& valueName, const QString& value) {
    return set(current_, valueName, {ValueType::text, utf16Bytes(value)});
}

bool RegOperation::DelReGval(const QString& valueName) {
    status_ = registry_.deleteValue(current_, valueName);
    return status_ == status::success;
}

bool RegOperation::DelRegValueA(ByReference keyPath, const QString& valueName) {
    return parse(*keyPath) && open(*keyPath, access::write) &&
           closeWorking(registry_.deleteValue(working_, valueName));
}

void RegOperation::GetSecurityReg() { status_ = registry_.keySecurity(current_); }

} // namespace qvnd::registry
