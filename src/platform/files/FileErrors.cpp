#include "platform/files/FileErrors.h"

#include "platform/error/RunTimeError.h"

namespace qvnd::files {

namespace {

QString description(long number) {
    switch (number) {
    case error::fileNotFound:
        return QStringLiteral("文件未找到");
    case error::fileAlreadyExists:
        return QStringLiteral("文件已存在");
    case error::diskFull:
        return QStringLiteral("磁盘已满");
    case error::permissionDenied:
        return QStringLiteral("没有权限");
    case error::pathNotFound:
        return QStringLiteral("路径未找到");
    default:
        return QStringLiteral("路径/文件访问错误");
    }
}

long numberOf(std::error_code code) {
    if (code == std::errc::no_such_file_or_directory || code == std::errc::not_a_directory) {
        return error::pathNotFound;
    }
    if (code == std::errc::file_exists) {
        return error::fileAlreadyExists;
    }
    if (code == std::errc::no_space_on_device) {
        return error::diskFull;
    }
    if (code == std::errc::permission_denied || code == std::errc::operation_not_permitted ||
        code == std::errc::read_only_file_system || code == std::errc::device_or_resource_busy ||
        code == std::errc::text_file_busy) {
        return error::permissionDenied;
    }
    return error::pathAccess;
}

} // namespace

void throwFileError(long number, const QString& path) {
    throw RunTimeError(number, (description(number) + u'：' + path).toStdU16String());
}

void throwFileError(std::error_code code, const QString& path) {
    throwFileError(numberOf(code), path);
}

} // namespace qvnd::files
