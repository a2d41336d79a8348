#include "platform/word/docfile/formatting/SectionPaper.h"

#include "platform/word/docfile/format/Dop.h"
#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"

#include <cstdlib>

namespace qvnd::word {

namespace {

int lengthIn(ByteView properties, SprmOpcode opcode, int otherwise) {
    const auto entry = findSprm(properties, opcode);
    return entry ? std::abs(static_cast<std::int16_t>(entry->operand[0] | (entry->operand[1] << 8)))
                 : otherwise;
}

} // namespace

SectionPaper sectionPaper(ByteView properties, bool gutterOnTop) {
    SectionPaper paper;
    paper.width = lengthIn(properties, sprm::SXaPage, 12240);
    paper.height = lengthIn(properties, sprm::SYaPage, 15840);
    paper.left = lengthIn(properties, sprm::SDxaLeft, 1800);
    paper.right = lengthIn(properties, sprm::SDxaRight, 1800);
    paper.top = lengthIn(properties, sprm::SDyaTop, 1440);
    paper.bottom = lengthIn(properties, sprm::SDyaBottom, 1440);
    (gutterOnTop ? paper.top : paper.left) += lengthIn(properties, sprm::SDzaGutter, 0);
    return paper;
}

bool gutterOnTop(ByteView settings) { return readDop(settings, dop::gutterAtTop) != 0; }

} // namespace qvnd::word
