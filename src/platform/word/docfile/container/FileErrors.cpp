#include "platform/word/docfile/container/FileErrors.h"

#include "platform/error/RunTimeError.h"

#include <algorithm>
#include <cerrno>
#include <initializer_list>

namespace qvnd::word {

namespace {

bool isOneOf(const std::error_code& reason, std::initializer_list<std::errc> conditions) {
    return std::any_of(conditions.begin(), conditions.end(),
                       [&](std::errc condition) { return reason == condition; });
}

// Not every platform has this one, and no condition stands for it.
bool isQuotaExceeded([[maybe_unused]] const std::error_code& reason) {
#ifdef EDQUOT
    return reason.value() == EDQUOT;
#else
    return false;
#endif
}

} // namespace

void throwFileError(const std::error_code& reason, const std::filesystem::path& path) {
    const std::u16string file = u"“" + path.u16string() + u"”";
    if (isOneOf(reason, {std::errc::no_space_on_device, std::errc::file_too_large}) ||
        isQuotaExceeded(reason)) {
        throw RunTimeError(error::diskFull, u"磁盘已满,无法写入文件" + file + u"。");
    }
    if (isOneOf(reason, {std::errc::permission_denied, std::errc::operation_not_permitted,
                         std::errc::read_only_file_system, std::errc::text_file_busy,
                         std::errc::device_or_resource_busy})) {
        throw RunTimeError(error::permissionDenied,
                           u"没有写入文件" + file + u"的权限,或者文件正被其他程序使用。");
    }
    if (isOneOf(reason, {std::errc::no_such_file_or_directory, std::errc::not_a_directory})) {
        throw RunTimeError(error::pathNotFound, u"找不到文件" + file + u"所在的文件夹。");
    }
    throw RunTimeError(error::pathAccess, u"无法访问文件" + file + u"。");
}

} // namespace qvnd::word
