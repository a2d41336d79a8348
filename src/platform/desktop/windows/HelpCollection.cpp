#include "platform/desktop/windows/HelpCollection.h"

#include "platform/error/RunTimeError.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QHelpContentModel>
#include <QHelpEngine>
#include <QHelpIndexModel>
#include <QRegularExpression>
#include <QThread>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace qvnd::desktop {

namespace {

const QString folderInFile = u"help"_s;
const QString firstPage = u"index.html"_s;

[[noreturn]] void fail(long number, const QString& reason) {
    throw RunTimeError(number, reason.toStdU16String());
}

[[noreturn]] void failDamaged(const QString& helpFile) {
    fail(error::unrecognizedFormat,
         u"帮助文件已损坏，或者不是帮助文件：%1"_s.arg(QDir::toNativeSeparators(helpFile)));
}

QByteArray contentOf(const QString& helpFile) {
    const QString shown = QDir::toNativeSeparators(helpFile);
    QFile file(helpFile);
    if (!file.exists()) {
        fail(error::fileNotFound,
             u"找不到帮助文件：%1\n请重新启动程序；仍然没有时，把安装包 share/qvnd 文件夹中的 "
             u"Qvnd.hlp 复制过来。"_s.arg(shown));
    }
    if (QFileInfo(helpFile).isDir() || !file.open(QIODevice::ReadOnly)) {
        fail(error::pathAccess, u"不能读取帮助文件：%1"_s.arg(shown));
    }
    return file.readAll();
}

QString fingerprint(const QString& helpFile, const QByteArray& content) {
    QCryptographicHash hash(QCryptographicHash::Sha1);
    hash.addData(QFileInfo(helpFile).absoluteFilePath().toUtf8());
    hash.addData(content);
    return QString::fromLatin1(hash.result().toHex());
}

void removeOthers(const QString& folder, const QString& name) {
    const QDir cache(folder);
    for (const QString& file : cache.entryList({u"*.qhc"_s}, QDir::Files)) {
        if (file != name) {
            QFile::remove(cache.filePath(file));
        }
    }
}

} // namespace

HelpCollection::HelpCollection(const QString& helpFile, const QString& cacheFolder)
    : helpFile_(helpFile) {
    const QFileInfo info(helpFile);
    changed_ = info.lastModified();
    size_ = info.size();
    const QByteArray content = contentOf(helpFile);
    namespace_ = QHelpEngineCore::namespaceName(helpFile);
    if (namespace_.isEmpty()) {
        failDamaged(helpFile);
    }
    catalogue(cacheFolder, content);
    expectReadable();
}

HelpCollection::~HelpCollection() = default;

// Contents and index are read in threads of their own, which look into the engine: it must not go
// under them.
void HelpCollection::EndOfEngine::operator()(QHelpEngine* engine) const {
    while (engine->contentModel()->isCreatingContents() ||
           engine->indexModel()->isCreatingIndex()) {
        QThread::msleep(1);
    }
    delete engine;
}

bool HelpCollection::isOf(const QString& helpFile) const {
    const QFileInfo info(helpFile);
    return helpFile == helpFile_ && info.lastModified() == changed_ && info.size() == size_;
}

// A catalogue that a killed program left half done is made once more.
void HelpCollection::catalogue(const QString& cacheFolder, const QByteArray& content) {
    const QString name = fingerprint(helpFile_, content) + u".qhc"_s;
    const QString path = cacheFolder + u'/' + name;
    if (!QDir().mkpath(cacheFolder)) {
        fail(error::pathAccess,
             u"不能建立帮助的缓存文件夹：%1"_s.arg(QDir::toNativeSeparators(cacheFolder)));
    }
    const bool isKnown = QFile::exists(path);
    if (openCatalogue(path)) {
        if (!isKnown) {
            removeOthers(cacheFolder, name);
        }
        return;
    }
    engine_.reset();
    QFile::remove(path);
    if (!openCatalogue(path)) {
        fail(error::pathAccess,
             u"不能建立帮助的目录文件：%1"_s.arg(QDir::toNativeSeparators(path)));
    }
}

bool HelpCollection::openCatalogue(const QString& path) {
    engine_.reset(new QHelpEngine(path));
    engine_->setReadOnly(false);
    const QString file = QFileInfo(helpFile_).absoluteFilePath();
    return engine_->setupData() &&
           (engine_->registeredDocumentations() == QStringList{namespace_} ||
            (engine_->registerDocumentation(file) && engine_->setupData())) &&
           QFileInfo(engine_->documentationFileName(namespace_)) == QFileInfo(file);
}

// A file that was cut off opens, but some of its pages are gone.
void HelpCollection::expectReadable() const {
    const QList<QUrl> all = pages();
    const bool whole = std::all_of(all.begin(), all.end(),
                                   [this](const QUrl& page) { return !data(page).isEmpty(); });
    if (!whole || !all.contains(home())) {
        failDamaged(helpFile_);
    }
}

QUrl HelpCollection::home() const {
    return u"qthelp://%1/%2/%3"_s.arg(namespace_, folderInFile, firstPage);
}

QUrl HelpCollection::pageOf(const QString& window) const {
    const QUrl page = home().resolved(QUrl(window + u".html"_s));
    return window.isEmpty() || data(page).isEmpty() ? QUrl() : page;
}

QList<QUrl> HelpCollection::pages() const {
    return engine_->files(namespace_, QStringList(), u"html"_s);
}

QString HelpCollection::html(const QUrl& page) const {
    static const QString chinese =
        u"\\x{2018}-\\x{201d}\\x{2026}\\x{3000}-\\x{303f}\\x{4e00}-\\x{9fff}\\x{ff00}-\\x{ffef}"_s;
    static const QRegularExpression lineBreak(
        u"(?<=[%1])\\n\\s*(?=[%1<])|(?<=>)\\n\\s*(?=[%1])"_s.arg(chinese));
    return QString::fromUtf8(data(page)).remove(lineBreak);
}

QByteArray HelpCollection::data(const QUrl& url) const { return engine_->fileData(url); }

} // namespace qvnd::desktop
