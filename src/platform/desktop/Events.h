#pragma once

namespace qvnd::desktop {

// The yield of a long run: input that has arrived meanwhile is served now.
class Events {
public:
    virtual ~Events() = default;
    virtual void doEvents() = 0;
    // Serves all but input, which waits: windows stay painted while a command must not be
    // disturbed. Nothing happens where there are no windows.
    virtual void keepPainted() {}
};

} // namespace qvnd::desktop
