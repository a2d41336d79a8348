#pragma once

#include "platform/word/model/Window.h"
#include "support/recording/CallLog.h"

namespace qvnd::test {

class RecordingView : public word::View, Recorded {
public:
    using Recorded::Recorded;
    int SplitSpecial() override {
        called("SplitSpecial -> " + log_.text(splitSpecial));
        return splitSpecial;
    }
    word::ViewType Type() override {
        called("Type -> " + log_.text(static_cast<int>(type)));
        return type;
    }
    void setType(word::ViewType value) override { set("Type", static_cast<int>(value)); }
    void setSeekView(word::SeekView story) override { set("SeekView", static_cast<int>(story)); }

    int splitSpecial = 0;
    word::ViewType type = word::ViewType::page;
};

class RecordingPane : public word::Pane, Recorded {
public:
    RecordingPane(CallLog& log, const std::string& name)
        : Recorded(log, name), view(log, name + ".View") {}
    word::View& View() override { return view; }
    void Close() override { called("Close"); }

    RecordingView view;
};

class RecordingWindow : public word::Window {
public:
    explicit RecordingWindow(CallLog& log)
        : view(log, "ActiveWindow.View"), activePane(log, "ActiveWindow.ActivePane"),
          secondPane_(log, "ActiveWindow.Panes(2)") {}
    word::View& View() override { return view; }
    word::Pane& ActivePane() override { return activePane; }
    word::Pane& Panes(int index) override {
        if (index != 2)
            throw RunTimeError(error::memberNotFound, u"集合所要求的成员不存在");
        return secondPane_;
    }

    RecordingView view;
    RecordingPane activePane;

private:
    RecordingPane secondPane_;
};

} // namespace qvnd::test
