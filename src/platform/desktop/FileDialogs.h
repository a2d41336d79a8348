#pragma once

#include <QString>

#include <vector>

namespace qvnd::desktop {

struct OpenFileQuestion {
    QString title;
    // Pairs of label and pattern joined by "|": "Word 文档 (*.doc)|*.doc|RTF (*.rtf)|*.rtf".
    QString filter;
    // Appended by the dialog to a typed name that has no extension; without a point.
    QString defaultExtension;
};

struct ChosenFile {
    // The whole path, native separators. The file need not exist: a name may be typed.
    QString fileName;
    // The name without its folder.
    QString fileTitle;
};

class FileDialogs {
public:
    virtual ~FileDialogs() = default;

    // Throws RunTimeError 32755 when the user cancels.
    virtual ChosenFile open(const OpenFileQuestion& question) = 0;
    // The same for one file or more; of several each exists. A dialog that knows one file alone
    // answers with that.
    virtual std::vector<ChosenFile> openSeveral(const OpenFileQuestion& question) {
        return {open(question)};
    }
};

} // namespace qvnd::desktop
