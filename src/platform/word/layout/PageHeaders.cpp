#include "platform/word/layout/PageHeaders.h"

#include <utility>

namespace qvnd::layout {

TextRoom PageHeaders::begin(const HeaderStrips::Of& of, bool isFirstOfSection, word::PageText ahead,
                            Page& page) {
    const word::ResolvedSection& section = rules_.sections()[of.section];
    const word::SectionPaper paper = rules_.paperOf(section, page.number);
    const HeaderStrips::Both set = with(of, ahead, page);
    if (!strips_.follow(section)) {
        putOn(page, set, section, paper);
    }
    const TextRoom room = textRoom(section, set.header.height, set.footer.height);
    const HeldHeaders held{rules_.bordersHoldHeader() && set.header.height > 0,
                           rules_.bordersHoldFooter() && set.footer.height > 0};
    addPageBorders(section.borders, isFirstOfSection, borderedArea(section, paper, room, held),
                   page);
    const bool isOfOffice = rules_.pageSetting(section).options.officeLines;
    return isOfOffice ? centredOnGrid(room, gridOf(section).linePitch) : room;
}

void PageHeaders::finish(const HeaderStrips::Of& of, word::PageText text, Page& page) {
    const word::ResolvedSection& section = rules_.sections()[of.section];
    if (!strips_.follow(section)) {
        return;
    }
    Layer body = std::exchange(page.layer, {});
    putOn(page, with(of, text, page), section, rules_.paperOf(section, page.number));
    page.layer.append(std::move(body), 0, 0);
}

HeaderStrips::Both PageHeaders::with(const HeaderStrips::Of& of, word::PageText text, Page& page) {
    const PageFields fields = fields_.of(of.section, page.number, text);
    page.numberText = fields.number;
    return strips_.of(of, fields, rules_.pageSetting(rules_.sections()[of.section]));
}

} // namespace qvnd::layout
