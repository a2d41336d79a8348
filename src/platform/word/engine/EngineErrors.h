#pragma once

#include "platform/error/RunTimeError.h"

namespace qvnd::word {

inline RunTimeError memberNotFound() {
    return {error::memberNotFound, u"集合中所要求的成员不存在。"};
}

inline RunTimeError serverGone() {
    return {error::automationServerGone, u"远程服务器不存在或不可用。"};
}

// Numbers as the word processor has them.
inline RunTimeError noDocumentOpen() { return {4248, u"此命令无效，因为没有打开的文档。"}; }
inline RunTimeError documentClosed() { return {5825, u"对象已被删除。"}; }
inline RunTimeError outOfRange() { return {4608, u"值超出范围。"}; }

} // namespace qvnd::word
