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

// Every property set of the stream, and every value in it, begins where there is room for one.
bool pointsInside(ByteView stream) {
    constexpr std::size_t setsAt = 24;
    LittleEndianReader reader(stream, "PropertySetStream");
    reader.seek(setsAt);
    for (std::uint32_t left = reader.u32(); left > 0; --left) {
        reader.skip(16);
        LittleEndianReader set(stream, "PropertySet");
        set.seek(reader.u32());
        const std::size_t size = set.u32();
        const ByteView values = set.view(size - 4);
        LittleEndianReader places(values, "PropertySet");
        for (std::uint32_t count = places.u32(); count > 0; --count) {
            places.skip(4);
            if (places.u32() + std::size_t{4} > size) {
                return false;
            }
        }
    }
    return true;
}

void checkInformation(const CompoundFile& compound, Findings& findings) {
    for (const char16_t* name :
         {u"\u0005SummaryInformation", u"\u0005DocumentSummaryInformation"}) {
        bool sound = true;
        try {
            sound = !compound.has(name) || pointsInside(compound.stream(name));
        } catch (const FormatError&) {
            sound = false;
        }
        if (!sound) {
            findings.add("information.form", u"文档属性的结构已损坏");
        }
    }
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
        checkInformation(compound, findings);
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
    checkComments(evidence, findings);
    checkSettings(evidence, findings);
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
