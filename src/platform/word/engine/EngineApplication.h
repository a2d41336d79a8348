#pragma once

#include "platform/word/engine/EngineDocument.h"
#include "platform/word/engine/EngineSelection.h"
#include "platform/word/engine/EngineWindow.h"
#include "platform/word/model/Application.h"

#include <memory>
#include <vector>

namespace qvnd::word {

// The word processor that this program brings along. After Quit every call throws 462; without an
// open document, 4248.
class EngineApplication : public Application, private Documents {
public:
    explicit EngineApplication(const EngineServices& services);

    Documents& documents() override;
    Document& ActiveDocument() override { return active(); }
    Window& ActiveWindow() override;
    word::Selection& Selection() override;

    // There is no window of its own to show or bring forward.
    void setVisible(bool visible) override;
    float CentimetersToPoints(float centimetres) override;
    void Activate() override;
    void Quit() override;

    EngineDocument& active();

private:
    Document& Add() override;
    Document& Add(const std::filesystem::path& path) override;
    Document& Open(const std::filesystem::path& path) override;

    void requireRunning() const;
    EngineDocument& enter(DocumentContent content, std::filesystem::path path);
    EngineDocument& enterFile(const std::filesystem::path& file, std::filesystem::path path);

    EngineServices services_;
    bool isRunning_ = true;
    // Closed ones stay as empty shells, since references to them may be held.
    std::vector<std::unique_ptr<EngineDocument>> all_;
    std::vector<EngineDocument*> open_; // the active one last
    EngineSelection selection_{*this};
    EngineWindow window_{*this};
};

// Creates independent engines over the same services.
class EngineApplicationFactory : public ApplicationFactory {
public:
    explicit EngineApplicationFactory(const EngineServices& services) : services_(services) {}
    std::unique_ptr<Application> create() override {
        return std::make_unique<EngineApplication>(services_);
    }

private:
    EngineServices services_;
};

} // namespace qvnd::word
