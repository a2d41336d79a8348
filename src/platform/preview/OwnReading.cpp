#include "platform/preview/OwnReading.h"

#include "platform/files/Paths.h"
#include "platform/preview/StoryReading.h"
#include "platform/word/docfile/SprmCodes.h"
#include "platform/word/engine/DocumentSource.h"

#include <algorithm>
#include <cstdlib>

namespace qvnd::preview {

namespace {

double lengthOf(word::ByteView section, word::SprmOpcode opcode, int otherwise) {
    constexpr double twipsPerPoint = 20;
    const auto entry = word::findSprm(section, opcode);
    const int twips =
        entry ? static_cast<std::int16_t>(entry->operand[0] | (entry->operand[1] << 8)) : otherwise;
    return std::abs(twips) / twipsPerPoint;
}

// What a section does not say is as for one without properties, [MS-DOC] 2.6.4.
Paper paperOf(const word::DocumentData& document) {
    namespace sprm = word::sprm;
    constexpr double least = 72;
    constexpr double leastText = 36;
    const word::ByteView section =
        document.sections.empty() ? word::ByteView{}
                                  : document.tables.lists[document.sections.front().properties];
    Paper paper;
    paper.width = std::max(least, lengthOf(section, sprm::SXaPage, 12240));
    paper.height = std::max(least, lengthOf(section, sprm::SYaPage, 15840));
    paper.left = lengthOf(section, sprm::SDxaLeft, 1800) + lengthOf(section, sprm::SDzaGutter, 0);
    paper.right = lengthOf(section, sprm::SDxaRight, 1800);
    paper.top = lengthOf(section, sprm::SDyaTop, 1440);
    paper.bottom = lengthOf(section, sprm::SDyaBottom, 1440);
    if (paper.left + paper.right > paper.width - leastText) {
        paper.left = paper.right = paper.width / 8;
    }
    if (paper.top + paper.bottom > paper.height - leastText) {
        paper.top = paper.bottom = paper.height / 8;
    }
    return paper;
}

} // namespace

DocumentReading ownReading(const word::DocumentData& document, const ReadingLimits& limits) {
    DocumentReading reading;
    reading.paper = paperOf(document);
    ReadingContext context(document, reading);
    reading.blocks = StoryReading(context, document.main, limits).read(reading.isCut);
    return reading;
}

DocumentReading ownReading(const QString& path, const ReadingLimits& limits) {
    return ownReading(word::readDocumentFile(files::toPath(path)), limits);
}

} // namespace qvnd::preview
