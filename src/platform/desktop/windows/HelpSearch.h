#pragma once

#include <QString>
#include <QStringList>
#include <QUrl>

#include <vector>

namespace qvnd::desktop {

// One page as the search sees it.
struct HelpText {
    QUrl page;
    QString title;
    QString text; // plain, the title not among it
};

// One page that was found.
struct HelpHit {
    QUrl page;
    QString title;
    QString excerpt; // the words with some text around them, on one line
};

// A search over the texts of all pages. Chinese has no blanks between words, so a word is found
// wherever its characters stand in a row; capitals and small letters are the same.
class HelpSearch {
public:
    explicit HelpSearch(std::vector<HelpText> pages) : pages_(std::move(pages)) {}

    // Pages that hold every one of the words, which stand apart by blanks; pages with a word in the
    // title come first, then those that name the words most often. Where there is none: pages that
    // hold at least half of the words' pairs of characters, so that 删除模板 still finds a page
    // that speaks of 删除 and 模板.
    std::vector<HelpHit> find(const QString& words) const;

    // What `find` looks for: the words of a text, without what stands between them.
    static QStringList words(const QString& text);

private:
    struct Ranked {
        const HelpText* page = nullptr;
        qsizetype rank = 0;
    };

    std::vector<Ranked> withAll(const QStringList& words) const;
    std::vector<Ranked> withMost(const QStringList& pairs) const;

    std::vector<HelpText> pages_;
};

} // namespace qvnd::desktop
