#pragma once

#include "format/controls/Control.h"

#include "platform/files/FileErrors.h"
#include "platform/files/Paths.h"

// What a dialog shows and the user does not touch.
namespace qvnd::format {

enum class TextAlign { left, middle, right };

// A label of a preview.
class Label : public Control {
public:
    Label(Controls& dialog, QStringView name, QStringView caption)
        : Control(dialog, name), caption_(caption.toString()) {}

    const QString& caption() const { return caption_; }
    void setCaption(const QString& caption) { take(caption_, caption); }

    // Empty before one was set: the window's own font.
    const QString& fontName() const { return fontName_; }
    void setFontName(const QString& name) { take(fontName_, name); }
    // In points as they are to be drawn, the preview's factor included; 0 before one was set.
    float fontSize() const { return fontSize_; }
    void setFontSize(float points) { take(fontSize_, points); }

    TextAlign alignment() const { return alignment_; }
    void setAlignment(TextAlign alignment) { take(alignment_, alignment); }

private:
    template <class Value>
    void take(Value& held, const Value& value) {
        if (held != value) {
            held = value;
            show();
        }
    }

    QString caption_;
    QString fontName_;
    float fontSize_ = 0;
    TextAlign alignment_ = TextAlign::middle;
};

// A picture that is drawn from a file.
class Image : public Control {
public:
    using Control::Control;

    // The path of the file, spelt as on disk; empty without a picture.
    const QString& picture() const { return picture_; }
    // Error 53 when there is no such file; the earlier picture then stays. Another file may have
    // come under the same path, so the window is told in any case.
    void load(const QString& path) {
        if (!files::fileExists(path)) {
            files::throwFileError(error::fileNotFound, path);
        }
        picture_ = files::resolved(path);
        show();
    }
    void clear() {
        picture_.clear();
        show();
    }

private:
    QString picture_;
};

} // namespace qvnd::format
