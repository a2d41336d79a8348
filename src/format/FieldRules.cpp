#include "format/FieldRules.h"

#include "format/FormatLists.h"
#include "format/RangeCheck.h"
#include "platform/files/Trim.h"
#include "store/Names.h"

#include <QHash>

#include <functional>

using namespace Qt::StringLiterals;

namespace qvnd::format {

namespace field = store::field;
namespace table = store::table;

namespace {

// Why a value is refused; empty when it is taken.
using Rule = std::function<QString(const QString& value)>;

Rule oneOf(const QStringList& words) {
    return [words](const QString& value) {
        return words.contains(value)
                   ? QString()
                   : u"“%1”不能用在这里，可用的有：%2"_s.arg(value, words.join(u' '));
    };
}

Rule within(const LengthRange& range) {
    return [&range](const QString& value) { return range.problemOf(value); };
}

QStringList leaderWords() {
    QStringList words;
    for (const QString& entry : leaderList()) {
        words << leaderWordOf(entry).value_or(QString());
    }
    return words;
}

using Rules = QHash<QString, Rule>;

void add(Rules& rules, QStringView of, std::initializer_list<QStringView> fields,
         const Rule& rule) {
    for (const QStringView name : fields) {
        rules.insert(of.toString() + u'.' + name.toString(), rule);
    }
}

Rules allRules() {
    const Rule flag = oneOf({store::yes.toString(), store::no.toString()});
    const Rule position = oneOf({u"左"_s, u"中"_s, u"右"_s});
    const Rule size = oneOf(sizeList());
    Rules rules;
    add(rules, table::selection, {field::withCover, field::withSetting, field::withCustomPages},
        flag);
    add(rules, table::cover, {field::projectSize, field::officeSize, field::dateSize}, size);
    add(rules, table::cover, {field::pictureWidth, field::pictureHeight}, within(pictureLength()));
    add(rules, table::chapters, {field::startsPage, field::withTitle}, flag);
    add(rules, table::chapters, {field::position}, position);
    add(rules, table::chapters, {field::size}, size);
    add(rules, table::chapters, {field::level}, oneOf(levelList()));
    add(rules, table::chapters, {field::sample}, oneOf(sampleList()));
    add(rules, table::chapters, {field::numberStyle},
        oneOf({u"一型"_s, u"I型"_s, u"A型"_s, u"aa型"_s, u"a型"_s}));
    add(rules, table::headerFooter,
        {field::withHeader, field::withFooter, field::rightAligned, field::withPageNumbers}, flag);
    add(rules, table::headerFooter, {field::headerPosition, field::footerPosition}, position);
    add(rules, table::headerFooter, {field::headerSize, field::footerSize}, size);
    add(rules, table::headerFooter, {field::levelsShown}, oneOf(levelList()));
    add(rules, table::headerFooter, {field::leader}, oneOf(leaderWords()));
    add(rules, table::pageSetup,
        {field::marginTop, field::marginBottom, field::marginLeft, field::marginRight,
         field::gutter, field::headerDistance, field::footerDistance},
        within(pageLength()));
    add(rules, table::pageSetup, {field::gutterSide}, oneOf({u"边"_s, u"顶"_s}));
    add(rules, table::pageSetup, {field::bodySize}, size);
    return rules;
}

} // namespace

QString problemOf(const QString& of, const QString& name, const QString& value) {
    static const Rules rules = allRules();
    const Rule rule = rules.value(of + u'.' + name);
    return rule ? rule(files::Trim(value)) : QString();
}

void setField(jet::Recordset& row, const QString& of, const QString& name, const QString& value) {
    const QString text = files::Trim(value);
    row.Set(name, text);
    if (of == table::chapters && name == field::sample) {
        row.Set(field::numberStyle, numberStyleOf(text, RowIs::there).value_or(QString()));
    }
}

} // namespace qvnd::format
