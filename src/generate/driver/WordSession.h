#pragma once

#include "platform/word/model/Application.h"

#include <memory>

namespace qvnd::generate {

// The program's two references into the word processor: the server that was started for a
// command and the document that it keeps. Every access through an empty reference raises error
// 91. A reference may outlive its command: what is still held is dropped before the next start.
class WordSession {
public:
    bool held() const { return application_ != nullptr; }
    void hold(std::unique_ptr<word::Application> application);
    void dropApplication();

    void keepDocument(word::Document& document) { document_ = &document; }
    void dropDocument() { document_ = nullptr; }

    word::Application& application() const;
    word::Document& document() const;
    word::Selection& selection() const { return application().Selection(); }
    word::Document& activeDocument() const { return application().ActiveDocument(); }
    word::Window& activeWindow() const { return application().ActiveWindow(); }

private:
    std::unique_ptr<word::Application> application_;
    word::Document* document_ = nullptr;
};

} // namespace qvnd::generate
