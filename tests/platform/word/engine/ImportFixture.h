#pragma once

#include "platform/word/docfile/document/DocumentContent.h"
#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/engine/DocumentImport.h"
#include "platform/word/formatting/BuiltInStyles.h"
#include "platform/word/formatting/StyleResolver.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace qvnd::word::importing {

inline Bytes operator+(Bytes list, const Bytes& more) {
    list.insert(list.end(), more.begin(), more.end());
    return list;
}

inline Bytes sprm8(SprmOpcode opcode, unsigned operand) { return withSprm8({}, opcode, operand); }
inline Bytes sprm16(SprmOpcode opcode, unsigned operand) { return withSprm16({}, opcode, operand); }
inline Bytes sprm32(SprmOpcode opcode, std::uint32_t operand) {
    return withSprm32({}, opcode, operand);
}

inline Bytes bytesOf(ByteView view) { return {view.begin(), view.end()}; }

inline StyleDefinition styleOf(StyleKind kind, std::u16string name, std::uint16_t number,
                               StyleIndex base = StyleDefinition::none) {
    StyleDefinition style;
    style.kind = kind;
    style.name = std::move(name);
    style.sti = number;
    style.basedOn = base;
    return style;
}

inline FontEntry fontOf(const std::u16string& name, std::uint8_t charset = 0) {
    return {name, u"", Bytes{0, 0x90, 1, charset}};
}

// Tables of a document with Normal, the default paragraph font, the normal table and one font.
inline DocumentTables plainTables(const std::u16string& normalName = u"正文",
                                  const std::u16string& font = u"宋体") {
    DocumentTables tables;
    tables.fonts.push_back(fontOf(font));
    auto& styles = tables.styles.styles;
    styles.resize(15);
    styles[0] = styleOf(StyleKind::paragraph, normalName, sti::normal);
    styles[10] =
        styleOf(StyleKind::character, u"Default Paragraph Font", sti::defaultParagraphFont);
    styles[11] = styleOf(StyleKind::table, u"Normal Table", sti::normalTable);
    return tables;
}

// A document put together paragraph by paragraph.
class SourceDocument {
public:
    Story main;
    DocumentContent data; // all but the main story

    SourceDocument() { data.tables = plainTables(u"Normal", u"Times New Roman"); }

    const DocumentContent& document() {
        data.main = slicesOf(main);
        return data;
    }
    DocumentContent take() {
        document();
        return std::move(data);
    }
    PropertyListId list(const Bytes& sprms) { return data.tables.lists.intern(sprms); }
    StyleDefinition& style(StyleIndex index) { return *data.tables.styles.styles.at(index); }

    StyleIndex addStyle(StyleDefinition style) {
        auto& styles = data.tables.styles.styles;
        const auto fixed = fixedStyleIndex(style.sti);
        const auto place = fixed.value_or(static_cast<StyleIndex>(styles.size()));
        if (place >= styles.size()) {
            styles.resize(place + std::size_t{1});
        }
        styles[place] = std::move(style);
        return place;
    }
    std::uint16_t addFont(const std::u16string& name, std::uint8_t charset = 0) {
        data.tables.fonts.push_back(fontOf(name, charset));
        return static_cast<std::uint16_t>(data.tables.fonts.size() - 1);
    }
    // A list with one level; the answer is its index for sprmPIlfo.
    std::uint16_t addList(std::int32_t lsid, std::uint8_t numberFormat,
                          const Bytes& paragraph = {}) {
        ListLevel level;
        level.head[0] = 1;
        level.head[4] = numberFormat;
        level.text = numberFormat == 23 ? std::u16string(u"\u2022") : std::u16string(u"\0.", 2);
        level.paragraph = list(paragraph);
        ListDefinition definition;
        definition.lsid = lsid;
        definition.linkedStyles.fill(StyleDefinition::none);
        definition.levels.push_back(level);
        data.tables.listDefinitions.push_back(definition);
        data.tables.listOverrides.push_back({lsid, 0, 0, {}});
        return static_cast<std::uint16_t>(data.tables.listOverrides.size());
    }
    // Text in one paragraph; its mark is added.
    void paragraph(const std::u16string& text, StyleIndex style = 0, const Bytes& direct = {},
                   const Bytes& characters = {}) {
        run(text, characters);
        run(u"\r", {});
        endParagraph(style, direct);
    }
    void run(const std::u16string& text, const Bytes& characters = {}) {
        for (std::size_t i = 0; i < text.size(); ++i) {
            if (text[i] >= 0x13 && text[i] <= 0x15) {
                const auto at = static_cast<Cp>(main.text.size() + i);
                main.fields.push_back({at, static_cast<std::uint8_t>(text[i]), 0});
            }
        }
        main.text += text;
        if (!text.empty()) {
            main.characters.push_back({static_cast<Cp>(text.size()), list(characters)});
        }
    }
    void endParagraph(StyleIndex style = 0, const Bytes& direct = {}) {
        Cp before = 0;
        for (const ParagraphRun& paragraph : main.paragraphs) {
            before += paragraph.length;
        }
        main.paragraphs.push_back({main.size() - before, style, list(direct)});
    }
};

// A target with one call to bring documents in, and what came in last.
class ImportTarget {
public:
    DocumentTables tables = plainTables();
    BookmarkNames names;
    struct Imported : DocumentBody {
        std::shared_ptr<const Story> text; // the main story
        std::vector<std::u16string> leftOut;
        std::vector<std::u16string> changed;
    };
    Imported last;

    Imported& import(const DocumentContent& source) {
        last = {};
        ImportNotes notes;
        static_cast<DocumentBody&>(last) = importDocument(tables, names, source, notes);
        last.leftOut = notes.leftOut;
        last.changed = notes.changed;
        last.text = joined(last.main);
        return last;
    }
    ByteView paragraphList(std::size_t paragraph = 0) const {
        return tables.lists[last.text->paragraphs.at(paragraph).properties];
    }
    ByteView runList(std::size_t run = 0) const {
        return tables.lists[last.text->characters.at(run).properties];
    }
    const StyleDefinition& styleOfParagraph(std::size_t paragraph = 0) const {
        return *tables.styles.styles.at(last.text->paragraphs.at(paragraph).style);
    }
};

inline std::uint16_t operand16(ByteView list, SprmOpcode opcode) {
    const auto found = findSprm(list, opcode);
    return found ? static_cast<std::uint16_t>(found->operand[0] | (found->operand[1] << 8))
                 : std::uint16_t{0xFFFF};
}

inline int operand8(ByteView list, SprmOpcode opcode) {
    const auto found = findSprm(list, opcode);
    return found ? found->operand[0] : -1;
}

} // namespace qvnd::word::importing
