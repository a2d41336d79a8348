#pragma once

#include "platform/layout/PagedDocument.h"
#include "platform/word/docfile/container/Bytes.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace qvnd::test {

// A document whose tables are typed row by row.
class TypedRows : public PagedDocument {
protected:
    // A row with these texts in cells between these edges; `flags` of its cells' definitions.
    void typeRow(const std::vector<std::u16string>& cells, const std::vector<unsigned>& edges,
                 const std::vector<unsigned>& flags = {}) {
        const Bytes inTable = withSprm8({}, sprm::PFInTable, 1);
        for (const std::u16string& cell : cells) {
            append(main, cell);
            main.text += u'\a';
            main.characters.push_back({1, {}});
            main.paragraphs.push_back({static_cast<word::Cp>(cell.size() + 1), 0, intern(inTable)});
        }
        word::LittleEndianWriter definition;
        definition.u16(sprm::TDefTable);
        definition.u16(static_cast<unsigned>(2 + 2 * edges.size() + 20 * cells.size()));
        definition.u8(static_cast<unsigned>(cells.size()));
        for (const unsigned edge : edges) {
            definition.u16(edge);
        }
        for (std::size_t i = 0; i < cells.size(); ++i) {
            definition.u16(i < flags.size() ? flags[i] : 0);
            definition.u16(0);
            definition.u32(i == 0 ? 0x00010108 : 0); // the first has a border on its top
            definition.u32(0);
            definition.u32(bottomSide);
            definition.u32(0);
        }
        Bytes mark = withSprm8(inTable, sprm::PFTtp, 1);
        const Bytes row = definition.take();
        mark.insert(mark.end(), row.begin(), row.end());
        mark.insert(mark.end(), moreOfRows.begin(), moreOfRows.end());
        main.text += u'\a';
        main.characters.push_back({1, {}});
        main.paragraphs.push_back({1, 0, intern(mark)});
    }
    std::uint32_t bottomSide = 0; // of the cells of the next rows, a Brc80
    Bytes moreOfRows;             // entries behind the definitions of the next rows
};

} // namespace qvnd::test
