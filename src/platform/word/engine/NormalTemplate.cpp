#include "platform/word/engine/NormalTemplate.h"

#include "platform/word/docfile/format/Dop.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/engine/SprmList.h"
#include "platform/word/engine/StoryBuilder.h"
#include "platform/word/engine/TemplateStyles.h"
#include "platform/word/formatting/BuiltInStyles.h"

#include <memory>

namespace qvnd::word {

namespace {

constexpr std::size_t fixedPlaces = 15; // of the style sheet, [MS-DOC] 2.4.5 cstd

PropertyListId pageOf(PropertyLists& lists) {
    return SprmList()
        .word(sprm::SXaPage, 11906)
        .word(sprm::SYaPage, 16838)
        .word(sprm::SDyaTop, 1440)
        .word(sprm::SDyaBottom, 1440)
        .word(sprm::SDxaLeft, 1797)
        .word(sprm::SDxaRight, 1797)
        .word(sprm::SDyaHdrTop, 850)
        .word(sprm::SDyaHdrBottom, 992)
        .in(lists);
}

void enterStyles(DocumentTables& tables) {
    tables.styles.styles.resize(fixedPlaces);
    for (const std::uint16_t number :
         {sti::normal, sti::defaultParagraphFont, sti::normalTable, sti::noList, sti::header,
          sti::footer, sti::pageNumber, sti::hyperlink}) {
        requireStyle(tables, number);
    }
    for (std::uint16_t level = 0; level < 9; ++level) {
        requireStyle(tables, sti::heading1 + level);
        requireStyle(tables, sti::contents1 + level);
    }
}

} // namespace

DocumentContent normalTemplate() {
    DocumentContent content;
    enterStyles(content.tables);

    auto text = std::make_shared<Story>();
    StoryBuilder(*text).mark(u'\r', {}, PropertyListId::empty);
    content.main.push_back({text, 0, 1});
    content.sections.push_back({1, pageOf(content.tables.lists)});
    content.headers.emplace_back();
    content.settings = defaultDop();
    return content;
}

} // namespace qvnd::word
