#include "platform/preview/windows/PreviewFonts.h"

#include <QFontDatabase>

using namespace Qt::StringLiterals;

namespace qvnd::preview {

namespace {

bool isSansSerif(const QString& name) {
    static const QStringList marks{u"黑"_s,      u"圆"_s,    u"Hei"_s,     u"Arial"_s,
                                   u"Sans"_s,    u"Yahei"_s, u"Calibri"_s, u"Tahoma"_s,
                                   u"Verdana"_s, u"Helvet"_s};
    return std::any_of(marks.begin(), marks.end(), [&](const QString& mark) {
        return name.contains(mark, Qt::CaseInsensitive);
    });
}

bool isChinese(const QString& name) {
    static const QStringList marks{u"Sim"_s, u"Kai"_s, u"Song"_s, u"Ming"_s, u"Hei"_s, u"Fang"_s};
    return std::any_of(name.begin(), name.end(), [](QChar c) { return c.unicode() > 0x2E80; }) ||
           std::any_of(marks.begin(), marks.end(), [&](const QString& mark) {
               return name.contains(mark, Qt::CaseInsensitive);
           });
}

QStringList standIns(bool sansSerif, bool chinese) {
    if (chinese && sansSerif) {
        return {u"SimHei"_s, u"Microsoft YaHei"_s, u"Noto Sans CJK SC"_s, u"Source Han Sans SC"_s,
                u"WenQuanYi Zen Hei"_s};
    }
    if (chinese) {
        // Unlike those of SimSun, the strokes of other serif faces get lost on a page that is
        // fitted to a pane.
        return {u"SimSun"_s,
                u"NSimSun"_s,
                u"AR PL UMing CN"_s,
                u"Noto Sans CJK SC"_s,
                u"Source Han Sans SC"_s,
                u"Noto Serif CJK SC"_s};
    }
    return sansSerif ? QStringList{u"Arial"_s, u"Liberation Sans"_s, u"DejaVu Sans"_s}
                     : QStringList{u"Times New Roman"_s, u"Liberation Serif"_s, u"DejaVu Serif"_s};
}

void addFirstInstalled(QStringList& families, const QStringList& candidates) {
    for (const QString& candidate : candidates) {
        if (!candidate.isEmpty() && QFontDatabase::hasFamily(candidate)) {
            families << candidate;
            return;
        }
    }
}

} // namespace

QStringList installedFamilies(const QStringList& named) {
    QStringList families;
    bool sansSerif = false;
    for (const QString& name : named) {
        sansSerif = isSansSerif(name);
        addFirstInstalled(families, QStringList{name} + standIns(sansSerif, isChinese(name)));
    }
    addFirstInstalled(families, standIns(sansSerif, true));
    families.removeDuplicates();
    return families;
}

} // namespace qvnd::preview
