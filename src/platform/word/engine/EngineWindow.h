#pragma once

#include "platform/word/model/Window.h"

namespace qvnd::word {

class EngineApplication;

// The one window, on the active document; it is never split.
class EngineWindow : public Window, private View, private Pane {
public:
    explicit EngineWindow(EngineApplication& application) : application_(application) {}

    word::View& View() override { return *this; }
    Pane& ActivePane() override { return *this; }
    Pane& Panes(int index) override;

private:
    int SplitSpecial() override { return 0; }
    ViewType Type() override { return type_; }
    void setType(ViewType type) override { type_ = type; }
    void setSeekView(word::SeekView story) override;
    void Close() override;

    EngineApplication& application_;
    ViewType type_ = ViewType::page;
};

} // namespace qvnd::word
