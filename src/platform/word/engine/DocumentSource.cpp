#include "platform/word/engine/DocumentSource.h"

#include "platform/error/RunTimeError.h"
#include "platform/error/Utf8.h"
#include "platform/word/docfile/container/FormatError.h"
#include "platform/word/docfile/reader/DocumentReader.h"
#include "platform/word/docfile/reader/ForeignFile.h"

namespace qvnd::word {

namespace {

std::u16string nameOf(const std::filesystem::path& path) { return path.filename().u16string(); }

// What the file is instead, where that can be told.
std::u16string insteadOf(const std::filesystem::path& path) {
    const std::u16string format = foreignFormat(path);
    return format.empty() ? std::u16string()
                          : u"，而是" + format + u"，请用相应的程序打开后另存为 Word 97-2003 文档";
}

std::u16string reasonOf(FormatError::Kind kind) {
    switch (kind) {
    case FormatError::Kind::unreadable:
        return u"无法读取，请检查是否有权限或被其他程序占用";
    case FormatError::Kind::notCompoundFile:
        return u"不是 Word 97-2003 格式的文档";
    case FormatError::Kind::notWord:
        return u"文件中没有 Word 文档";
    case FormatError::Kind::olderThanWord97:
        return u"是 Word 97 以前版本的文档，请用 Word 另存为 Word 97-2003 文档后再试";
    case FormatError::Kind::encrypted:
        return u"设有打开密码，请去掉密码后再试";
    case FormatError::Kind::damaged:
        break;
    }
    return u"文件已损坏";
}

std::u16string kindOfEncryption(const std::filesystem::path& path) {
    const std::u16string kind = encryptionOf(path);
    return kind.empty() ? kind : u"（加密方式：" + kind + u"）";
}

bool isForeign(FormatError::Kind kind) {
    return kind == FormatError::Kind::notCompoundFile || kind == FormatError::Kind::notWord;
}

} // namespace

DocumentContent readDocumentFile(const std::filesystem::path& path) {
    std::error_code ignored;
    if (!std::filesystem::exists(path, ignored)) {
        throw RunTimeError(error::fileNotFound, u"找不到文件“" + path.u16string() + u"”。");
    }
    try {
        return readDocument(path);
    } catch (const FormatError& refusal) {
        std::u16string reason = reasonOf(refusal.kind());
        if (isForeign(refusal.kind())) {
            reason += insteadOf(path);
        } else if (refusal.kind() == FormatError::Kind::encrypted) {
            reason += kindOfEncryption(path);
        }
        throw RunTimeError(error::invalidCall,
                           u"不能打开文件“" + nameOf(path) + u"”：" + reason + u"。");
    }
}

} // namespace qvnd::word
