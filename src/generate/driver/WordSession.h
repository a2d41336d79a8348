#pragma once

#include "platform/word/model/Application.h"

#include <memory>

namespace qvnd::generate {

// The program's two references into the word processor: the server that was started for a
// command and the document that it keeps. Every access through an empty reference raises error
// 91. A reference may outlive its command: what is still held is dropped before the next start.
class WordSession {
public:
    // A command's work through the session. While it lasts, the word processor's window counts as
    // open, so that a second command is refused and does not drop what the first one holds.
    class Work {
    public:
        explicit Work(WordSession& session) : session_(session), before_(session.isAtWork_) {
            session.isAtWork_ = true;
        }
        ~Work() { session_.isAtWork_ = before_; }
        Work(const Work&) = delete;
        Work& operator=(const Work&) = delete;

    private:
        WordSession& session_;
        bool before_;
    };

    bool isAtWork() const { return isAtWork_; }

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
    bool isAtWork_ = false;
};

} // namespace qvnd::generate
