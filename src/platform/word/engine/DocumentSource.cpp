#include "platform/word/engine/DocumentSource.h"

#include "platform/error/RunTimeError.h"
#include "platform/error/Utf8.h"
#include "platform/word/docfile/container/FormatError.h"
#include "platform/word/docfile/reader/DocumentReader.h"
#include "platform/word/docfile/reader/ForeignFile.h"

#include <optional>
#include <utility>

namespace qvnd::word {

namespace {

constexpr const char16_t* advice = u"请用相应的程序打开后另存为 Word 97-2003 文档。";
constexpr const char16_t* adviceToRepair =
    u"请在 Word 的“打开”对话框中用“打开并修复”打开它，另存后再试。";
constexpr const char16_t* adviceToInstall = u"安装办公套件（LibreOffice）后程序会自动转换它；"
                                            u"也可以用相应的程序打开后另存为 Word 97-2003 文档。";

std::u16string reasonOf(FormatError::Kind kind) {
    switch (kind) {
    case FormatError::Kind::unreadable:
        return u"无法读取，请检查是否有权限或被其他程序占用";
    case FormatError::Kind::notCompoundFile:
        return u"不是 Word 97-2003 格式的文档";
    case FormatError::Kind::notWord:
        return u"文件中没有 Word 文档";
    case FormatError::Kind::olderThanWord97:
        return u"是 Word 97 以前版本的文档";
    case FormatError::Kind::encrypted:
        return u"设有打开密码，请去掉密码后再试";
    case FormatError::Kind::damaged:
        break;
    }
    return u"文件的基本结构已损坏，不能从中读出文字";
}

std::u16string reasonOfEncrypted(const std::filesystem::path& path) {
    const std::u16string kind = encryptionOf(path);
    if (kind == rightsManagement) {
        return u"受" + kind + u"保护，请在 Word 中解除限制后再试";
    }
    const std::u16string reason = reasonOf(FormatError::Kind::encrypted);
    return kind.empty() ? reason : reason + u"（加密方式：" + kind + u"）";
}

// What the file is instead of a Word 97-2003 document.
ForeignFormat insteadOf(const std::filesystem::path& path, FormatError::Kind kind) {
    switch (kind) {
    case FormatError::Kind::notCompoundFile:
    case FormatError::Kind::notWord:
        return foreignFormat(path);
    case FormatError::Kind::olderThanWord97:
        return {u"Word 97 以前版本的文档", true};
    default:
        return {};
    }
}

// A refused file: why, and what it is instead.
struct Refusal {
    std::filesystem::path path;
    FormatError::Kind kind;
    ForeignFormat instead;

    // `help` ends in a full stop.
    DocumentRefusal with(const std::u16string& help) const {
        std::u16string reason = reasonOf(kind);
        if (kind == FormatError::Kind::encrypted) {
            reason = reasonOfEncrypted(path);
        } else if (kind != FormatError::Kind::olderThanWord97 && !instead.name.empty()) {
            reason += u"，而是" + instead.name;
        }
        return DocumentRefusal({error::invalidCall, u"不能打开文件“" + path.filename().u16string() +
                                                        u"”：" + reason + help},
                               instead.isText ? instead.name : std::u16string());
    }

    DocumentRefusal withoutConverter() const {
        if (instead.isText) {
            return with(std::u16string(u"。") + adviceToInstall);
        }
        if (kind == FormatError::Kind::damaged) {
            return with(std::u16string(u"。") + adviceToRepair);
        }
        return with(instead.name.empty() ? u"。" : std::u16string(u"，") + advice);
    }
};

template <class Source>
DocumentContent readBeside(const LongWork& longWork, const Source& source) {
    if (!longWork) {
        return readDocument(source);
    }
    std::optional<DocumentContent> content;
    longWork([&] { content = readDocument(source); });
    return std::move(*content);
}

DocumentReading convertedDocument(const Refusal& refusal, DocumentConverter& converter,
                                  const LongWork& longWork) {
    try {
        return {readBeside(longWork, converter.converted(refusal.path)),
                u"原文件是" + refusal.instead.name + u"，已由办公套件转换，版面可能有出入。"};
    } catch (const RunTimeError& failure) {
        if (failure.number() == error::stopped) {
            throw;
        }
        throw refusal.with(u"。" + failure.description() + advice);
    } catch (const FormatError&) {
        throw refusal.with(std::u16string(u"。办公套件转换的结果无法读取。") + advice);
    }
}

} // namespace

DocumentReading readConverting(const std::filesystem::path& path, DocumentConverter* converter,
                               const LongWork& longWork) {
    std::error_code ignored;
    if (!std::filesystem::exists(path, ignored)) {
        throw RunTimeError(error::fileNotFound, u"找不到文件“" + path.u16string() + u"”。");
    }
    try {
        return {readBeside(longWork, path), {}};
    } catch (const FormatError& error) {
        const Refusal refusal{path, error.kind(), insteadOf(path, error.kind())};
        if (refusal.instead.isText && converter != nullptr && converter->isAvailable()) {
            return convertedDocument(refusal, *converter, longWork);
        }
        throw refusal.withoutConverter();
    }
}

DocumentContent readDocumentFile(const std::filesystem::path& path, DocumentConverter* converter,
                                 const LongWork& longWork) {
    DocumentReading source = readConverting(path, converter, longWork);
    if (!source.conversion.empty()) {
        Remarks& remarks = source.content.unread.remarks;
        remarks.insert(remarks.begin(), source.conversion);
    }
    return std::move(source.content);
}

} // namespace qvnd::word
