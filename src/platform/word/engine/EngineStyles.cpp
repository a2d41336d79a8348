#include "platform/word/engine/EngineStyles.h"

#include "platform/word/engine/EngineDocument.h"
#include "platform/word/engine/EngineErrors.h"
#include "platform/word/engine/StyleLookup.h"
#include "platform/word/engine/TemplateStyles.h"
#include "platform/word/formatting/BuiltInStyles.h"

namespace qvnd::word {

StyleDefinition& EngineStyle::definition() {
    return *document_.read().tables().styles.styles.at(index_);
}

void EngineStyle::changeFont(const FontChange& change) {
    DocumentTables& all = document_.change().tables();
    StyleDefinition& style = definition();
    style.character = propertyChange(all, change)(style.character);
}

DocumentTables& EngineStyle::tables() { return document_.read().tables(); }

void EngineStyle::changeLooks(const LookChange& change) {
    document_.change();
    StyleDefinition& style = definition();
    style.paragraph = change({style.basedOn, style.paragraph}).properties;
}

int EngineStyle::characterWidth() { return characterSize(tables(), PropertyListId::empty, index_); }

Style& EngineStyles::Item(std::u16string_view name) {
    DocumentTables& tables = document_.read().tables();
    auto index = styleNamed(tables.styles, name);
    if (!index) {
        // A built-in style exists in every document, entered or not.
        const auto known = builtInStyleNamed(name);
        if (!known || known->kind == StyleKind::table || known->kind == StyleKind::list) {
            throw memberNotFound();
        }
        index = requireStyle(tables, known->number);
    }
    auto& item = items_[*index];
    if (!item) {
        item = std::make_unique<EngineStyle>(document_, *index);
    }
    return *item;
}

} // namespace qvnd::word
