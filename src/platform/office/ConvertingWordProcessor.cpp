#include "platform/office/ConvertingWordProcessor.h"

#include "platform/error/RunTimeError.h"
#include "platform/files/Paths.h"

#include <QFileInfo>
#include <QTemporaryDir>

#include <vector>

namespace qvnd::office {

namespace {

bool isForTheEngine(const QString& path) {
    const QString extension = QFileInfo(path).suffix().toLower();
    return extension == "doc" || extension == "dot";
}

class ConvertingDocuments : public word::Documents {
public:
    ConvertingDocuments(word::Documents& engine, const OfficeSuite& suite)
        : engine_(engine), suite_(suite) {}

    word::Document& Add() override { return engine_.Add(); }
    word::Document& Add(const std::filesystem::path& path) override { return engine_.Add(path); }
    word::Document& Open(const std::filesystem::path& path) override {
        const QString source = files::fromPath(path);
        return engine_.Open(isForTheEngine(source) ? path : converted(source));
    }

private:
    std::filesystem::path converted(const QString& source) {
        if (!suite_.isInstalled()) {
            throw RunTimeError(
                error::fileNotFound,
                ("转换“" + QFileInfo(source).fileName() +
                 "”需要办公软件 LibreOffice，但没有找到。请安装它，或先把文件另存为 .doc 格式。")
                    .toStdU16String());
        }
        const QString target = folder_.filePath(QString::number(++count_) + QStringLiteral(".doc"));
        suite_.convert(source, target, QStringLiteral("doc:MS Word 97"));
        return files::toPath(target);
    }

    word::Documents& engine_;
    const OfficeSuite& suite_;
    // Of what was converted, as long as the application may read from it.
    QTemporaryDir folder_;
    int count_ = 0;
};

class ConvertingApplication : public word::Application {
public:
    ConvertingApplication(std::unique_ptr<word::Application> engine, OfficeSuite suite)
        : suite_(std::move(suite)), engine_(std::move(engine)) {}

    word::Documents& documents() override {
        if (!documents_) {
            documents_ = std::make_unique<ConvertingDocuments>(engine_->documents(), suite_);
        }
        return *documents_;
    }
    word::Document& ActiveDocument() override { return engine_->ActiveDocument(); }
    word::Window& ActiveWindow() override { return engine_->ActiveWindow(); }
    word::Selection& Selection() override { return engine_->Selection(); }
    void setVisible(bool visible) override { engine_->setVisible(visible); }
    float CentimetersToPoints(float centimetres) override {
        return engine_->CentimetersToPoints(centimetres);
    }
    void Activate() override { engine_->Activate(); }
    void Quit() override { engine_->Quit(); }

private:
    OfficeSuite suite_;
    std::unique_ptr<ConvertingDocuments> documents_;
    std::unique_ptr<word::Application> engine_;
};

} // namespace

std::unique_ptr<word::Application> ConvertingWordProcessor::create() {
    return std::make_unique<ConvertingApplication>(engine_.create(), suite_);
}

} // namespace qvnd::office
