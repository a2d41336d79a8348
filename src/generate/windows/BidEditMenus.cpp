#include "generate/windows/BidEditMenus.h"

#include "generate/CommandCaptions.h"
#include "outline/windows/OutlineIcons.h"

using namespace Qt::StringLiterals;

namespace qvnd::generate {

namespace {

QMenu* menu(QWidget& window, const QString& name, const QString& caption) {
    auto* made = new QMenu(caption, &window);
    made->setObjectName(name);
    made->setAccessibleName(QString(caption).remove(u'&').section(u'(', 0, 0));
    return made;
}

QAction* item(QMenu& menu, const QString& name, const QString& caption,
              const QString& icon = QString()) {
    QAction* made = menu.addAction(caption);
    made->setObjectName(name);
    if (!icon.isEmpty())
        made->setIcon(outline::commandIcon(icon));
    return made;
}

} // namespace

BidEditMenus::BidEditMenus(QWidget& window) {
    mnuBidEdit = menu(window, u"mnuBidEdit"_s, u"施工方案编辑(&E)"_s);
    mnuBidSet = item(*mnuBidEdit, u"mnuBidSet"_s, captions::settings, u"settings"_s);
    mnuBul = item(*mnuBidEdit, u"mnuBul"_s, captions::contents);
    mnuBuildbid = item(*mnuBidEdit, u"mnuBuildbid"_s, captions::generation, u"generate"_s);
    mnuBrowsebid = item(*mnuBidEdit, u"mnuBrowsebid"_s, u"浏览卷宗编制"_s, u"browse"_s);
    mnuspace1 = mnuBidEdit->addSeparator();
    mnuspace1->setObjectName(u"mnuspace1"_s);
    mnuBack = item(*mnuBidEdit, u"mnuBack"_s, u"返回"_s, u"back"_s);

    mnudatadoc = menu(window, u"mnudatadoc"_s, u"资料文档(&D)"_s);
    mnuBidData = item(*mnudatadoc, u"mnuBidData"_s, u"资料库"_s, u"cabinet"_s);
    mnuBidLike = item(*mnudatadoc, u"mnuBidLike"_s, u"类似文档"_s, u"similar"_s);
    mnuOpenDoc = item(*mnudatadoc, u"mnuOpenDoc"_s, u"打开文档"_s, u"open"_s);

    mnuCheckReport = menu(window, u"mnuCheckReport"_s, u"检查与输出(&C)"_s);
    mnuCheck = item(*mnuCheckReport, u"mnuCheck"_s, u"生成前检查"_s, u"check"_s);
    mnuReport = item(*mnuCheckReport, u"mnuReport"_s, u"生成报告"_s, u"report"_s);
    mnuPdf = item(*mnuCheckReport, u"mnuPdf"_s, u"输出 PDF"_s, u"pdf"_s);

    mnuOpen = menu(window, u"mnuOpen"_s, QString());
    mnuOpen->setAccessibleName(u"文档"_s);
    mnuDocOpen = item(*mnuOpen, u"mnuDocOpen"_s, u"打开"_s, u"open"_s);
    mnuBrowseDoc = item(*mnuOpen, u"mnuBrowseDoc"_s, u"浏览"_s, u"browse"_s);
}

} // namespace qvnd::generate
