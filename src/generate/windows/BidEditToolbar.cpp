#include "generate/windows/BidEditToolbar.h"

using namespace Qt::StringLiterals;

namespace qvnd::generate {

namespace {

std::vector<outline::CommandToolbar::Button> buttons() {
    return {
        {u"标书设置"_s, u"施工方案设置"_s, u"settings"_s},
        {u"生成标书"_s, u"生成卷宗编制"_s, u"generate"_s},
        {u"浏览"_s, u"浏览卷宗编制"_s, u"browse"_s},
        {u"打开文档"_s, u"打开文档"_s, u"open"_s},
        {},
        {u"打开类似文档"_s, u"打开类似文档"_s, u"similar"_s},
        {u"资料库"_s, u"资料库"_s, u"cabinet"_s},
        {},
        {u"返回"_s, u"返回"_s, u"back"_s},
    };
}

} // namespace

BidEditToolbar::BidEditToolbar(QWidget* parent)
    : CommandToolbar(u"TbarBidSet"_s, buttons(), parent) {}

} // namespace qvnd::generate
