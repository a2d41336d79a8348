#include "platform/word/docfile/check/DocumentCheck.h"

#include "platform/word/docfile/check/Checks.h"
#include "platform/word/docfile/container/CompoundFile.h"
#include "platform/word/docfile/container/FormatError.h"

#include <exception>
#include <string_view>

namespace qvnd::word {

namespace {

const char16_t* reasonOf(FormatError::Kind kind) {
    switch (kind) {
    case FormatError::Kind::notCompoundFile:
        return u"不是复合文档";
    case FormatError::Kind::notWord:
        return u"复合文档中没有 Word 文档";
    case FormatError::Kind::olderThanWord97:
        return u"早于 Word 97 的文档";
    case FormatError::Kind::encrypted:
        return u"文档已加密";
    case FormatError::Kind::unreadable:
    case FormatError::Kind::damaged:
        break;
    }
    return u"文档的基本结构已损坏";
}

// Answers whether there is a document to look at.
bool openDocument(ByteView file, Evidence& evidence, Findings& findings) {
    try {
        const CompoundFile compound = CompoundFile::over(file);
        evidence.word = compound.stream(u"WordDocument");
        evidence.fib = readFib(evidence.word);
        evidence.table = compound.stream(evidence.fib.tableStreamName());
        if (compound.has(u"Data")) {
            evidence.data = compound.stream(u"Data");
        }
        constexpr std::u16string_view pool = u"ObjectPool/";
        for (const CompoundFile::Entry& entry : compound.entries()) {
            if (entry.storage && entry.path.starts_with(pool)) {
                evidence.objects.insert(entry.path.substr(pool.size()));
            }
        }
        return true;
    } catch (const FormatError& error) {
        findings.add("file.unreadable", reasonOf(error.kind()));
        return false;
    }
}

void checkContents(Evidence& evidence, Findings& findings) {
    checkFib(evidence, findings);
    checkPositions(evidence, findings);
    checkStyles(evidence, findings);
    checkFonts(evidence, findings);
    checkLists(evidence, findings);
    checkStyleProperties(evidence, findings);
    checkPieces(evidence, findings);
    checkFormattingPages(evidence, findings);
    checkSections(evidence, findings);
    checkParagraphs(evidence, findings);
    checkTables(evidence, findings);
    checkFields(evidence, findings);
    checkBookmarks(evidence, findings);
    checkPictures(evidence, findings);
    checkDrawings(evidence, findings);
    checkHeaders(evidence, findings);
    checkNotes(evidence, findings);
}

} // namespace

std::vector<Finding> checkDocument(ByteView file) {
    Findings findings;
    Evidence evidence;
    checkContainer(file, findings);
    if (openDocument(file, evidence, findings)) {
        checkContents(evidence, findings);
    }
    return findings.take();
}

} // namespace qvnd::word
