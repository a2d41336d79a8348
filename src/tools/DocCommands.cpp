#include "tools/DocCommands.h"

#include "platform/office/SuiteDocumentConverter.h"
#include "platform/word/docfile/check/DocumentCheck.h"
#include "platform/word/docfile/text/DocumentText.h"
#include "platform/word/docfile/text/SideStories.h"
#include "platform/word/docfile/writer/DocumentSummary.h"
#include "platform/word/docfile/writer/DocumentWriter.h"
#include "platform/word/engine/DocumentMerge.h"
#include "platform/word/engine/DocumentSource.h"
#include "startup/WordBoxes.h"
#include "tools/Arguments.h"
#include "tools/PageCommands.h"
#include "tools/Session.h"
#include "tools/UsageError.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonObject>

#include <filesystem>

namespace qvnd::tools {

namespace {

std::filesystem::path pathOf(const QString& name) { return name.toStdU16String(); }

word::FontChange fontOf(const Arguments& arguments) {
    word::FontChange font;
    if (arguments.hasOption(QStringLiteral("--font"))) {
        font.name = arguments.option(QStringLiteral("--font")).toStdU16String();
    }
    if (arguments.hasOption(QStringLiteral("--size"))) {
        bool isNumber = false;
        const float points = arguments.option(QStringLiteral("--size")).toFloat(&isNumber);
        if (!isNumber || !(points >= 1 && points <= 1638)) {
            throw UsageError(QStringLiteral("--size 要 1 到 1638 之间的磅数"));
        }
        font.points = points;
    }
    return font;
}

ExitStatus merge(Session& session, const QStringList& words) {
    const Arguments arguments(words, {{}, {QStringLiteral("--font"), QStringLiteral("--size")}});
    constexpr qsizetype manyFiles = 100000;
    arguments.expectPositions(2, manyFiles);
    const word::FontChange font = fontOf(arguments);
    if (!session.mayWrite(arguments.position(0))) {
        return ExitStatus::refused;
    }
    std::vector<std::filesystem::path> files;
    for (const QString& name : arguments.positions().mid(1)) {
        files.push_back(pathOf(name));
    }
    return refusing(session, [&] {
        startup::LossBoxes report(session.messages());
        office::SuiteDocumentConverter documents;
        const auto document = word::mergeDocuments(files, font, report, &documents);
        word::DocumentWriter().saveAs(pathOf(arguments.position(0)), document->content());
        session.output().result(QJsonObject{{"output", arguments.position(0)}}, {});
    });
}

ExitStatus text(Session& session, const QStringList& words) {
    const Arguments arguments(words, {});
    arguments.expectPositions(1, 1);
    return refusing(session, [&] {
        office::SuiteDocumentConverter documents;
        const auto document = word::readDocumentFile(pathOf(arguments.position(0)), &documents);
        const QString plain =
            QString::fromStdU16String(word::documentText(document.main, document.tables));
        session.output().result(QJsonObject{{"text", plain}}, plain);
    });
}

QJsonObject asJson(const word::DocumentSummary& facts) {
    const auto anchored = [&](word::AnchorKind kind) {
        return facts.anchors[static_cast<std::size_t>(kind)];
    };
    QJsonObject result{{"paragraphs", facts.paragraphs},
                       {"tables", facts.tables},
                       {"cells", facts.cells},
                       {"pictures", facts.pictures},
                       {"sections", facts.sections},
                       {"lists", facts.lists},
                       {"fields", facts.fields},
                       {"bookmarks", facts.bookmarks},
                       {"shapes", anchored(word::AnchorKind::drawing)},
                       {"embeddedObjects", facts.embeddedObjects},
                       {"styles", facts.styles}};
    for (const word::SidePart& part : word::sideParts) {
        result[QLatin1StringView(part.plural)] = anchored(part.kind);
    }
    return result;
}

QString asText(const QJsonObject& facts) {
    QStringList lines;
    for (auto fact = facts.begin(); fact != facts.end(); ++fact) {
        lines += fact.key() + QStringLiteral(": ") + QString::number(fact.value().toInt());
    }
    return lines.join(u'\n');
}

ExitStatus info(Session& session, const QStringList& words) {
    const Arguments arguments(words, {});
    arguments.expectPositions(1, 1);
    return refusing(session, [&] {
        office::SuiteDocumentConverter documents;
        auto document = word::readDocumentFile(pathOf(arguments.position(0)), &documents);
        QJsonObject facts = asJson(word::summarize(document));
        facts[u"pages"] = pagesOf(std::move(document));
        session.output().result(facts, asText(facts));
    });
}

ExitStatus check(Session& session, const QStringList& words) {
    const Arguments arguments(words, {});
    arguments.expectPositions(1, 1);
    QFile file(arguments.position(0));
    if (!file.open(QIODevice::ReadOnly)) {
        session.messages().tell(QStringLiteral("找不到文件“%1”。").arg(arguments.position(0)),
                                desktop::Icon::exclamation, QStringLiteral("警告！"));
        return ExitStatus::refused;
    }
    const QByteArray bytes = file.readAll();
    const auto findings =
        word::checkDocument(word::ByteView(reinterpret_cast<const std::uint8_t*>(bytes.data()),
                                           static_cast<std::size_t>(bytes.size())));
    QJsonArray json;
    QStringList lines;
    for (const word::Finding& finding : findings) {
        const QString rule = QString::fromStdString(finding.rule);
        const QString where = QString::fromStdU16String(finding.text);
        json.append(QJsonObject{{"rule", rule}, {"text", where}});
        lines += rule + QStringLiteral(": ") + where;
    }
    session.output().result(json, lines.join(u'\n'));
    return findings.empty() ? ExitStatus::done : ExitStatus::refused;
}

} // namespace

std::vector<Command> docCommands() {
    return {
        {QStringLiteral("doc merge"), QStringLiteral("[--font 字体 --size 磅数] 输出 文件..."),
         QStringLiteral("把各文件依次合成一个文档；输出已经存在时要有 --yes 才替换"), merge},
        {QStringLiteral("doc text"), QStringLiteral("文件"), QStringLiteral("文档的文字"), text},
        {QStringLiteral("doc info"), QStringLiteral("文件"),
         QStringLiteral("文档里有多少段落、表格、图片等"), info},
        {QStringLiteral("doc check"), QStringLiteral("文件"),
         QStringLiteral("按格式规定严格检查文档"), check}};
}

} // namespace qvnd::tools
