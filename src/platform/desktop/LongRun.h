#pragma once

#include <QString>

namespace qvnd::desktop {

// The progress of work in several pieces, which the user may cancel. It comes on the screen when
// the work has taken a second, so that short work shows nothing.
class LongRun {
public:
    virtual ~LongRun() = default;

    // `pieces`: how many calls of next() will follow; 0 for one piece of unknown length. Every
    // begin() needs its end(). A run that begins within another is a part of it: title and length
    // stay those of the outermost, and cancelling it cancels all.
    virtual void begin(const QString& title, int pieces) = 0;
    // From now on nothing can be cancelled any more, and nothing offers it: the work at hand cannot
    // be stopped. Within another run nothing changes, as that one can stop behind this.
    virtual void offerNoCancel() {}
    // The next piece begins; `text` names it.
    virtual void next(const QString& text) = 0;
    // True when the user has cancelled, until the end of the outermost run: the progress stays on
    // the screen until then and says that the work is being stopped. While it is on the screen the
    // desktop's events are served, before that all but input, so that windows stay painted. To be
    // asked between pieces and, now and then, within one; false when nothing has begun.
    virtual bool isCancelled() = 0;
    virtual void end() = 0;
};

// A long run from its begin() to its end(), however its work ends.
class LongRunScope {
public:
    LongRunScope(LongRun& run, const QString& title, int pieces) : run_(run) {
        run_.begin(title, pieces);
    }
    ~LongRunScope() { run_.end(); }
    LongRunScope(const LongRunScope&) = delete;
    LongRunScope& operator=(const LongRunScope&) = delete;

private:
    LongRun& run_;
};

} // namespace qvnd::desktop
