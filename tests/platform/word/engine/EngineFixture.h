#pragma once

#include "platform/word/docfile/document/Remarks.h"
#include "platform/word/docfile/reader/DocumentReader.h"
#include "platform/word/engine/EngineApplication.h"
#include "platform/word/engine/StoryBuilder.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace qvnd::test {

// Page numbers that a test sets: the n-th position asked for gets the n-th number.
class FakePages : public word::PageNumberSource {
public:
    std::vector<std::u16string> displayedPages(const word::DocumentContent& content,
                                               std::span<const word::Cp> positions) override {
        ++calls;
        asked.assign(positions.begin(), positions.end());
        std::u16string text;
        for (const word::StorySlice& slice : content.main) {
            text.append(slice.fragment->text, slice.begin, slice.length);
        }
        asksFor.clear();
        for (const word::Cp at : positions) {
            asksFor.push_back(text.substr(at, text.find(u'\r', at) - at));
        }
        std::vector<std::u16string> shown;
        for (const int number : numbers) {
            shown.push_back(word::digits(number));
        }
        return shown;
    }

    std::vector<int> numbers;
    std::vector<word::Cp> asked;
    std::vector<std::u16string> asksFor; // the paragraph that begins there
    int calls = 0;
};

class RecordedReport : public word::ImportReport {
public:
    void notCarried(const std::filesystem::path& path, std::u16string_view what) override {
        lines.push_back(told(path, what));
    }
    void converted(const std::filesystem::path& path, std::u16string_view what) override {
        conversions.push_back(told(path, what));
    }
    void changed(const std::filesystem::path& path, std::u16string_view what) override {
        changes.push_back(told(path, what));
    }
    std::vector<std::u16string> lines; // what was not carried
    std::vector<std::u16string> conversions;
    std::vector<std::u16string> changes;

private:
    static std::u16string told(const std::filesystem::path& path, std::u16string_view what) {
        return path.filename().u16string() + u": " + std::u16string(what);
    }
};

class AnsweredQuestion : public word::UnsavedChangesQuestion {
public:
    bool save(const std::filesystem::path& document) override {
        asked.push_back(document);
        return answer;
    }
    bool answer = false;
    std::vector<std::filesystem::path> asked;
};

inline word::Story wholeOf(const word::WorkingStory& story) {
    return *word::joined(story.slicesOf(0, story.size()));
}

// An engine with one empty document, over a folder that goes with the test.
class EngineTest : public testing::Test {
protected:
    EngineTest() { app.documents().Add(); }

    word::EngineDocument& document() { return app.active(); }
    word::WorkingStory& story() { return document().read().main(); }
    word::Selection& selection() { return app.Selection(); }
    std::u16string text() { return story().text(0, story().size()); }
    const word::PropertyLists& lists() { return document().read().tables().lists; }

    word::ByteView lookAt(word::Cp at) { return lists()[story().characterProperties(at)]; }
    word::ByteView paragraphAt(word::Cp at) {
        return lists()[story().paragraphLook(at).properties];
    }
    std::u16string styleAt(word::Cp at) {
        const auto& styles = document().read().tables().styles.styles;
        return styles.at(story().paragraphLook(at).style)->name;
    }
    void select(int start, int end) { document().Range(start, end)->Select(); }
    void type(std::u16string_view words) { selection().TypeText(words); }

    // A document file of these paragraphs.
    std::filesystem::path fileOf(const std::string& name,
                                 const std::vector<std::u16string>& paragraphs) {
        word::EngineApplication writer(services);
        word::Document& file = writer.documents().Add();
        for (std::size_t i = 0; i < paragraphs.size(); ++i) {
            if (i > 0) {
                writer.Selection().TypeParagraph();
            }
            writer.Selection().TypeText(paragraphs[i]);
        }
        file.SaveAs(folder.path() / name);
        return folder.path() / name;
    }

    ScratchFolder folder;
    FakePages pages;
    RecordedReport report;
    AnsweredQuestion question;
    word::EngineServices services{pages, report, question};
    word::EngineApplication app{services};
};

} // namespace qvnd::test
