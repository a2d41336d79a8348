#include "tools/PageCommands.h"

#include "platform/drawing/PagePainter.h"
#include "platform/error/RunTimeError.h"
#include "platform/office/OfficeSuite.h"
#include "platform/office/SuiteDocumentConverter.h"
#include "platform/pictures/PageImages.h"
#include "platform/word/docfile/text/DocumentText.h"
#include "platform/word/engine/DocumentSource.h"
#include "platform/word/formatting/FormatResolver.h"
#include "platform/word/formatting/NumberForms.h"
#include "platform/word/layout/DocumentLayout.h"
#include "tools/Arguments.h"
#include "tools/PageNumberChoice.h"
#include "tools/Session.h"
#include "tools/UsageError.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QSaveFile>
#include <QTemporaryDir>

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace qvnd::tools {

namespace {

word::DocumentContent readDocument(const QString& path) {
    office::SuiteDocumentConverter documents;
    return word::readDocumentFile(std::filesystem::path(path.toStdU16String()), &documents);
}

// A document with what its layout needs, laid out from its first page on.
class LaidOut {
public:
    LaidOut(const QString& path, drawing::FontChoice choice)
        : LaidOut(readDocument(path), choice, path.toStdU16String()) {}
    LaidOut(word::DocumentContent document, drawing::FontChoice choice, std::u16string path = {})
        : document_(std::move(document)), source_(layout::sourceOfToday(document_)), fonts_(choice),
          options_(layoutOptions(choice)) {
        if (choice == drawing::FontChoice::here) {
            source_.path = std::move(path);
        }
        begin();
    }

    // Calls `take` with each page as long as it answers true. A document that shows page counts is
    // laid out once before, to count them.
    void forEachPage(const std::function<bool(const layout::Page&)>& take) {
        if (layout_->showsPageCounts()) {
            pages();
            options_.counts = layout_->correctedCounts().value_or(options_.counts);
            begin();
        }
        std::optional<layout::Page> page = layout_->nextPage();
        while (page && take(*page)) {
            page = layout_->nextPage();
        }
    }

    // Lays all of it out; how many pages it has.
    int pages() {
        int count = 0;
        while (layout_->nextPage()) {
            ++count;
        }
        return count;
    }

    const word::DocumentContent& document() const { return document_; }
    drawing::FontFaces& fonts() { return fonts_; }
    const layout::DocumentLayout& layout() const { return *layout_; }

private:
    void begin() { layout_ = std::make_unique<layout::DocumentLayout>(source_, fonts_, options_); }

    word::DocumentContent document_;
    layout::LayoutSource source_;
    drawing::FontFaces fonts_;
    layout::LayoutOptions options_;
    std::unique_ptr<layout::DocumentLayout> layout_;
};

// A file that takes the old one's place when it is whole.
class WholeFile {
public:
    explicit WholeFile(const QString& path) : file_(path) {
        if (!file_.open(QIODevice::WriteOnly)) {
            fail();
        }
    }
    void write(word::ByteView bytes) {
        const auto size = static_cast<qint64>(bytes.size());
        if (file_.write(reinterpret_cast<const char*>(bytes.data()), size) != size) {
            fail();
        }
    }
    // What is still held back is written first: QSaveFile passes over a failure to write it at the
    // end.
    void commit() {
        if (!file_.flush() || !file_.commit()) {
            fail();
        }
    }

private:
    [[noreturn]] void fail() {
        throw RunTimeError(error::pathAccess, u"写不了文件“" + file_.fileName().toStdU16String() +
                                                  u"”：" + file_.errorString().toStdU16String());
    }
    QSaveFile file_;
};

void officePdf(const QString& from, const QString& to) {
    const QTemporaryDir profile;
    office::OfficeSuite(profile.path()).convert(from, to, u"pdf:writer_pdf_Export"_s);
}

int ownPdf(const QString& from, const QString& to, drawing::FontChoice fonts) {
    LaidOut document(from, fonts);
    WholeFile file(to);
    drawing::PagePainter painter(document.fonts(), pictures::pageImage);
    const auto pdf = painter.pdf([&](word::ByteView bytes) { file.write(bytes); });
    int pages = 0;
    document.forEachPage([&](const layout::Page& page) {
        pdf->add(page);
        ++pages;
        return true;
    });
    pdf->finish();
    file.commit();
    return pages;
}

struct PictureOptions {
    drawing::FontChoice fonts;
    int page;  // counted from 1
    int width; // pixels
};

void pagePicture(const QString& from, const QString& to, const PictureOptions& options) {
    LaidOut document(from, options.fonts);
    drawing::PagePainter painter(document.fonts(), pictures::pageImage);
    int pages = 0;
    document.forEachPage([&](const layout::Page& page) {
        if (++pages != options.page) {
            return true;
        }
        WholeFile file(to);
        file.write(drawing::pngOf(painter.image(page, options.width)));
        file.commit();
        return false;
    });
    if (options.page < 1 || options.page > pages) {
        throw RunTimeError(error::memberNotFound,
                           u"没有第 " + QString::number(options.page).toStdU16String() +
                               u" 页，文档共 " + QString::number(pages).toStdU16String() +
                               u" 页。");
    }
}

ExitStatus pdf(Session& session, const QStringList& words) {
    const Arguments arguments(words, {{u"--office"_s}, {u"--fonts"_s}});
    arguments.expectPositions(2, 2);
    const drawing::FontChoice fonts = fontChoice(arguments);
    const QString source = arguments.position(0);
    const QString target = arguments.position(1);
    if (!session.mayWrite(target)) {
        return ExitStatus::refused;
    }
    return refusing(session, [&] {
        QJsonObject told{{"output", target}};
        session.replace(target, [&](const QString& drawn) {
            if (arguments.has(u"--office"_s)) {
                officePdf(source, drawn);
            } else {
                told.insert("pages", ownPdf(source, drawn, fonts));
            }
        });
        session.output().result(told, {});
    });
}

ExitStatus png(Session& session, const QStringList& words) {
    constexpr int widest = 20000;
    const Arguments arguments(words, {{}, {u"--fonts"_s, u"--page"_s, u"--width"_s}});
    arguments.expectPositions(2, 2);
    const drawing::FontChoice fonts = fontChoice(arguments);
    const int wanted = arguments.number(u"--page"_s, 1);
    const int width = arguments.number(u"--width"_s, 800);
    if (width < 1 || width > widest) {
        throw UsageError(u"--width 要 1 到 20000 之间的像素数"_s);
    }
    const QString target = arguments.position(1);
    if (!session.mayWrite(target)) {
        return ExitStatus::refused;
    }
    return refusing(session, [&] {
        session.replace(target, [&](const QString& drawn) {
            pagePicture(arguments.position(0), drawn, {fonts, wanted, width});
        });
        session.output().result(QJsonObject{{"output", target}}, {});
    });
}

// A paragraph of an outline level, without its mark.
struct Heading {
    int level = 0;
    word::Cp at = 0;
    QString text;
};

std::vector<Heading> headingsOf(const word::DocumentContent& document) {
    std::vector<Heading> headings;
    word::FormatResolver formats(document.tables);
    word::Cp at = 0;
    const auto main = word::joined(document.main);
    for (const word::ParagraphRun& run : main->paragraphs) {
        const int level = formats.paragraph(run.style, run.properties).outlineLevel;
        const QString text =
            QString::fromStdU16String(main->text.substr(at, run.length)).simplified();
        if (level > 0 && !text.isEmpty()) {
            headings.push_back({level, at, text});
        }
        at += run.length;
    }
    return headings;
}

ExitStatus pages(Session& session, const QStringList& words) {
    const Arguments arguments(words, {{}, {u"--fonts"_s}});
    arguments.expectPositions(1, 1);
    const drawing::FontChoice fonts = fontChoice(arguments);
    return refusing(session, [&] {
        LaidOut document(arguments.position(0), fonts);
        const int count = document.pages();
        QJsonArray json;
        QStringList lines{u"共 %1 页"_s.arg(count)};
        for (const Heading& heading : headingsOf(document.document())) {
            const layout::LinePlace place = layout::placeOf(document.layout().lines(), heading.at);
            json.append(QJsonObject{{"level", heading.level},
                                    {"text", heading.text},
                                    {"page", place.sheet + 1},
                                    {"number", place.number}});
            lines += QString(2 * (heading.level - 1), u' ') + heading.text + u'\t' +
                     QString::fromStdU16String(document.layout().chapterAt(heading.at) +
                                               word::numberInForm(place.number, place.form));
        }
        session.output().result(QJsonObject{{"pages", count}, {"headings", json}},
                                lines.join(u'\n'));
    });
}

} // namespace

int pagesOf(word::DocumentContent document) {
    return LaidOut(std::move(document), drawing::FontChoice::named).pages();
}

std::vector<Command> pageCommands() {
    return {
        {u"doc pdf"_s, u"[--office] [--fonts here] 文件 输出"_s,
         u"把文档写成 PDF（自己排成页，--office 由办公套件写）；输出已经存在时要有 --yes 才替换"_s,
         pdf},
        {u"doc png"_s, u"[--page 页] [--width 像素] [--fonts here] 文件 输出"_s,
         u"把一页画成图片；输出已经存在时要有 --yes 才替换"_s, png},
        {u"doc pages"_s, u"[--fonts here] 文件"_s, u"文档的页数和各标题所在的页"_s, pages}};
}

} // namespace qvnd::tools
