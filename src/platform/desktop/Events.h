#pragma once

namespace qvnd::desktop {

// The yield of a long run: input that has arrived meanwhile is served now.
class Events {
public:
    virtual ~Events() = default;
    virtual void doEvents() = 0;
};

} // namespace qvnd::desktop
