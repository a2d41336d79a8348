#include "platform/word/engine/EngineApplication.h"

#include "platform/word/engine/DocumentOpening.h"
#include "platform/word/engine/DocumentSource.h"
#include "platform/word/engine/EngineErrors.h"
#include "platform/word/engine/NormalTemplate.h"

#include <algorithm>

namespace qvnd::word {

namespace {

std::filesystem::path comparable(const std::filesystem::path& path) {
    std::error_code failed;
    auto canonical = std::filesystem::weakly_canonical(path, failed);
    return failed ? path.lexically_normal() : canonical;
}

} // namespace

EngineApplication::EngineApplication(const EngineServices& services) : services_(services) {}

void EngineApplication::requireRunning() const {
    if (!isRunning_) {
        throw serverGone();
    }
}

Documents& EngineApplication::documents() {
    requireRunning();
    return *this;
}

EngineDocument& EngineApplication::active() {
    requireRunning();
    if (open_.empty()) {
        throw noDocumentOpen();
    }
    return *open_.back();
}

Window& EngineApplication::ActiveWindow() {
    active();
    return window_;
}

Selection& EngineApplication::Selection() {
    active();
    return selection_;
}

void EngineApplication::setVisible(bool /*visible*/) { requireRunning(); }

void EngineApplication::Activate() { requireRunning(); }

float EngineApplication::CentimetersToPoints(float centimetres) {
    requireRunning();
    constexpr double pointsPerCentimetre = 72 / 2.54;
    return static_cast<float>(centimetres * pointsPerCentimetre);
}

EngineDocument& EngineApplication::enter(DocumentContent content, std::filesystem::path path) {
    EngineDocument::Owner owner;
    owner.activate = [this](EngineDocument& document) {
        std::erase(open_, &document);
        open_.push_back(&document);
    };
    owner.closed = [this](EngineDocument& document) { std::erase(open_, &document); };
    all_.push_back(std::make_unique<EngineDocument>(std::move(content), std::move(path), services_,
                                                    std::move(owner)));
    open_.push_back(all_.back().get());
    return *all_.back();
}

EngineDocument& EngineApplication::enterFile(const std::filesystem::path& file,
                                             std::filesystem::path path) {
    DocumentContent data = readDocumentFile(file, services_.documents, services_.longWork);
    std::vector<std::u16string> losses;
    services_.runLong([&] { data = openedDocument(std::move(data), &losses); });
    EngineDocument& document = enter(std::move(data), std::move(path));
    document.addLosses(losses);
    return document;
}

Document& EngineApplication::Add() {
    requireRunning();
    return enter(normalTemplate(), {});
}

Document& EngineApplication::Add(const std::filesystem::path& path) {
    requireRunning();
    return enterFile(path, {});
}

Document& EngineApplication::Open(const std::filesystem::path& path) {
    requireRunning();
    const auto wanted = comparable(path);
    const auto open = std::find_if(open_.begin(), open_.end(), [&](EngineDocument* document) {
        return !document->path().empty() && comparable(document->path()) == wanted;
    });
    if (open != open_.end()) {
        EngineDocument& document = **open;
        document.Activate();
        return document;
    }
    return enterFile(path, path);
}

void EngineApplication::Quit() {
    requireRunning();
    while (!open_.empty()) {
        open_.back()->Close(std::nullopt);
    }
    isRunning_ = false;
}

} // namespace qvnd::word
