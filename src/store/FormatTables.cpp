#include "store/FormatTables.h"

#include "store/Names.h"
#include "store/PlanTables.h"

namespace qvnd::store {

using jet::Field;
using jet::FieldType;
using jet::TableDef;

namespace {

Field memo(QStringView name) { return TableDef::CreateField(name.toString(), FieldType::Memo); }

// Without a size it gets the engine's own.
Field text(QStringView name, int size = 0) {
    return TableDef::CreateField(name.toString(), FieldType::Text, size);
}

Field wideText(QStringView name) { return text(name, 255); }

Field whole(QStringView name) { return TableDef::CreateField(name.toString(), FieldType::Long); }

Field single(QStringView name) { return TableDef::CreateField(name.toString(), FieldType::Single); }

Field date(QStringView name) { return TableDef::CreateField(name.toString(), FieldType::Date); }

Field rowNumber() {
    Field number = whole(field::id);
    number.Attributes = jet::dbAutoIncrField;
    return number;
}

// The rule that all but the plain lists follow.
TableDef ruled(QStringView name, std::vector<Field> fields) {
    TableDef table(name.toString());
    for (Field& field : fields) {
        if (field.IsText()) {
            field.AllowZeroLength = true;
        } else if (field.Type == FieldType::Long) {
            field.DefaultValue = QStringLiteral("0");
        }
    }
    table.Fields = std::move(fields);
    return table;
}

TableDef customPagesTable() { return ruled(table::customPages, {memo(field::path), rowNumber()}); }

TableDef currentCustomPagesTable() {
    TableDef table(table::currentCustomPages.toString());
    table.Fields = {memo(field::path)};
    return table;
}

TableDef selectionTable() {
    return ruled(table::selection,
                 {memo(field::coverName), text(field::withCover), memo(field::settingName),
                  text(field::withSetting), text(field::withCustomPages)});
}

TableDef numberingTable() {
    return ruled(table::numbering, {wideText(field::chineseNumber), wideText(field::arabicNumber),
                                    wideText(field::capitalLetter), wideText(field::smallLetter),
                                    wideText(field::ordinal)});
}

TableDef coverTable() {
    return ruled(table::cover,
                 {memo(field::projectName), text(field::projectFont), text(field::projectSize),
                  memo(field::officeName), text(field::officeFont), text(field::officeSize),
                  date(field::date), text(field::dateFont), text(field::dateSize),
                  wideText(field::picture), whole(field::pictureWidth), whole(field::pictureHeight),
                  rowNumber()});
}

TableDef chaptersTable() {
    return ruled(table::chapters,
                 {wideText(field::level), wideText(field::font), text(field::size),
                  wideText(field::before), wideText(field::sample), wideText(field::numberStyle),
                  wideText(field::behind), wideText(field::position), wideText(field::startsPage),
                  wideText(field::withTitle), rowNumber()});
}

TableDef headerFooterTable() {
    return ruled(table::headerFooter,
                 {wideText(field::withHeader), memo(field::headerText), wideText(field::headerFont),
                  wideText(field::headerSize), wideText(field::headerPosition),
                  wideText(field::withFooter), memo(field::footerText), wideText(field::footerFont),
                  wideText(field::footerSize), wideText(field::footerPosition),
                  wideText(field::rightAligned), wideText(field::leader), whole(field::levelsShown),
                  wideText(field::withPageNumbers), rowNumber()});
}

TableDef pageSetupTable() {
    return ruled(table::pageSetup,
                 {single(field::marginTop), single(field::marginBottom), single(field::marginLeft),
                  single(field::marginRight), single(field::gutter), wideText(field::gutterSide),
                  wideText(field::bodyFont), wideText(field::bodySize),
                  single(field::headerDistance), single(field::footerDistance), rowNumber()});
}

} // namespace

std::vector<TableDef> formatTables() {
    return {
        customPagesTable(),
        nameTable(table::coverLibrary),
        currentCustomPagesTable(),
        nameTable(table::settingLibrary),
        selectionTable(),
        numberingTable(),
        coverTable(),
        chaptersTable(),
        headerFooterTable(),
        pageSetupTable(),
    };
}

} // namespace qvnd::store
