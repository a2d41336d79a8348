#pragma once

#include "platform/word/model/Document.h"
#include "support/recording/CallLog.h"

namespace qvnd::test {

class RecordingFont : public word::Font, Recorded {
public:
    using Recorded::Recorded;
    void setName(std::u16string_view name) override { set("Name", name); }
    void setSize(float points) override { set("Size", points); }
    void setBold(bool bold) override { set("Bold", bold); }
};

class RecordingParagraphFormat : public word::ParagraphFormat, Recorded {
public:
    using Recorded::Recorded;
    void setAlignment(word::Alignment alignment) override {
        set("Alignment", static_cast<int>(alignment));
    }
    void IndentCharWidth(int count) override { called("IndentCharWidth " + log_.text(count)); }
};

class RecordingStyle : public word::Style {
public:
    RecordingStyle(CallLog& log, const std::string& styleName)
        : name(styleName), font_(log, name + ".Font"), format_(log, name + ".ParagraphFormat") {}
    word::Font& Font() override { return font_; }
    word::ParagraphFormat& ParagraphFormat() override { return format_; }

    const std::string name;

private:
    RecordingFont font_;
    RecordingParagraphFormat format_;
};

class RecordingPageSetup : public word::PageSetup, Recorded {
public:
    using Recorded::Recorded;
    void setTopMargin(float points) override { set("TopMargin", points); }
    void setBottomMargin(float points) override { set("BottomMargin", points); }
    void setLeftMargin(float points) override { set("LeftMargin", points); }
    void setRightMargin(float points) override { set("RightMargin", points); }
    void setGutter(float points) override { set("Gutter", points); }
    void setGutterOnTop(bool onTop) override { set("GutterOnTop", onTop); }
    void setHeaderDistance(float points) override { set("HeaderDistance", points); }
    void setFooterDistance(float points) override { set("FooterDistance", points); }
};

} // namespace qvnd::test
