#include "platform/error/UnexpectedErrors.h"

#include "platform/error/Utf8.h"

#include <new>

namespace qvnd {

RunTimeError runTimeErrorOf(const std::exception& failure) {
    if (const auto* known = dynamic_cast<const RunTimeError*>(&failure)) {
        return *known;
    }
    if (dynamic_cast<const std::bad_alloc*>(&failure) != nullptr) {
        return {error::outOfMemory, u"内存不足，这一步没有完成。请关闭其他程序后再试。"};
    }
    return {error::internalError,
            u"程序内部出错，这一步没有完成。（" + fromUtf8(failure.what()) + u"）"};
}

} // namespace qvnd
