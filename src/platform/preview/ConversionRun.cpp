#include "platform/preview/ConversionRun.h"

#include "platform/office/OfficeSuite.h"
#include "platform/office/ProcessGroup.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QThreadPool>

using namespace Qt::StringLiterals;

namespace qvnd::preview {

namespace {

const QString scratchPattern = u"work-XXXXXX"_s;
constexpr int leftoverHours = 24;

QString scratchIn(const QString& cacheFolder) {
    QDir().mkpath(cacheFolder);
    return QDir(cacheFolder).filePath(scratchPattern);
}

bool isPdf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && file.read(5) == "%PDF-";
}

} // namespace

ConversionRun::ConversionRun(const ConversionSettings& settings, const PdfCache& cache,
                             const QString& document, PageConversion::Answer done)
    : settings_(settings), cache_(cache), done_(std::move(done)),
      scratch_(scratchIn(settings.cacheFolder)) {
    timer_.setSingleShot(true);
    if (!scratch_.isValid()) {
        fail(u"无法写入缓存文件夹“"_s + settings.cacheFolder + u"”。"_s);
        return;
    }
    // A plain name: the suite takes some characters of a file's name for a pattern or an option.
    QThreadPool::globalInstance()->start(
        [this, sender = mailbox_.sender(), document, cache, copy = inScratch(u"document.doc"_s)] {
            const Content content = takeIn(document, cache, copy);
            sender.post([this, content] { proceed(content); });
        });
}

ConversionRun::~ConversionRun() {
    process_.disconnect(this);
    if (process_.state() != QProcess::NotRunning) {
        office::endGroup(process_);
        process_.waitForFinished(1000); // a killed process is gone at once
    }
}

ConversionRun::Content ConversionRun::takeIn(const QString& document, const PdfCache& cache,
                                             const QString& copy) {
    Content content;
    QFile source(document);
    if (!source.open(QIODevice::ReadOnly)) {
        content.failure = u"无法读取文件“"_s + document + u"”。"_s;
        return content;
    }
    const QByteArray bytes = source.readAll();
    content.size = bytes.size();
    content.hash = QCryptographicHash::hash(bytes, QCryptographicHash::Sha256);
    content.cached = cache.find(content.hash);
    if (content.cached.isEmpty()) {
        QFile target(copy);
        if (!target.open(QIODevice::WriteOnly) || target.write(bytes) != bytes.size()) {
            content.failure = u"无法写入缓存文件夹“"_s + cache.folder() + u"”。"_s;
        }
    }
    return content;
}

void ConversionRun::proceed(const Content& content) {
    content_ = content;
    if (!content.failure.isEmpty()) {
        fail(content.failure);
    } else if (!content.cached.isEmpty()) {
        done_({content.cached, {}});
    } else {
        timer_.callOnTimeout(this, [this] { startSuite(); });
        timer_.start(settings_.settling);
    }
}

void ConversionRun::startSuite() {
    timer_.disconnect(this);
    timer_.callOnTimeout(this, [this] {
        process_.disconnect(this);
        office::endGroup(process_);
        fail(u"办公套件长时间没有响应，已结束。"_s);
    });
    timer_.start(settings_.patience + settings_.patiencePerMegabyte * (content_.size >> 20));
    connect(&process_, &QProcess::finished, this, [this](int code, QProcess::ExitStatus status) {
        suiteEnded(status == QProcess::NormalExit && code == 0);
    });
    connect(&process_, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) {
            suiteEnded(false);
        }
    });
    QDir().mkpath(settings_.profileFolder);
    process_.setStandardOutputFile(QProcess::nullDevice());
    process_.setStandardErrorFile(QProcess::nullDevice());
    office::setOwnGroup(process_);
    process_.start(settings_.program, {office::OfficeSuite::profileOption(settings_.profileFolder),
                                       u"--headless"_s, u"--norestore"_s, u"--nolockcheck"_s,
                                       u"--convert-to"_s, u"pdf:writer_pdf_Export"_s, u"--outdir"_s,
                                       inScratch(u"out"_s), inScratch(u"document.doc"_s)});
}

void ConversionRun::suiteEnded(bool well) {
    timer_.stop();
    const QString result = inScratch(u"out/document.pdf"_s);
    if (!well || !isPdf(result)) {
        fail(u"办公套件无法转换这个文档。"_s);
        return;
    }
    const QString kept = cache_.keep(content_.hash, result);
    if (kept.isEmpty()) {
        fail(u"无法写入缓存文件夹“"_s + settings_.cacheFolder + u"”。"_s);
    } else {
        done_({kept, {}});
    }
}

void ConversionRun::fail(const QString& reason) { done_({{}, reason}); }

void ConversionRun::clearLeftovers(const QString& cacheFolder) {
    const QDateTime old = QDateTime::currentDateTime().addSecs(-3600 * leftoverHours);
    for (const QFileInfo& folder :
         QDir(cacheFolder).entryInfoList({u"work-*"_s}, QDir::Dirs | QDir::NoDotAndDotDot)) {
        if (folder.lastModified() < old) {
            QDir(folder.filePath()).removeRecursively();
        }
    }
}

} // namespace qvnd::preview
