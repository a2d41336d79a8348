#include "format/HeaderFooterPage.h"

#include "support/FormatWorld.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace qvnd::format {
namespace {

const QString headerTable = u"页眉页脚表"_s;

class HeaderFooterPageTest : public testing::Test, protected test::FormatWorld {
protected:
    HeaderFooterPage& page() { return form().headerFooter; }
    QString of(QStringView field) { return value(headerTable, field); }
    void pick(ComboBox& box, const QString& entry) { box.pick(box.entries().indexOf(entry)); }

    struct Case {
        const char16_t* what;
        std::function<void()> act;
        QStringView field;
        QString written;
    };
    void check(const std::vector<Case>& cases) {
        for (const Case& each : cases) {
            each.act();
            EXPECT_EQ(of(each.field), each.written) << QString::fromUtf16(each.what).toStdString();
        }
    }
};

TEST_F(HeaderFooterPageTest, LoadShowsTheRow) {
    change(headerTable, u"页眉位置", u"左");
    change(headerTable, u"页脚位置", u"右");
    change(headerTable, u"制表样式", u"无");
    change(headerTable, u"显示级别", 5);
    change(headerTable, u"是否带页脚", u"否");
    EXPECT_TRUE(page().chkHeader.checked());
    EXPECT_EQ(page().TxtHeaderCon.text(), u"页眉"_s);
    EXPECT_EQ(page().cmbHeaderFont.text(), u"仿宋_GB2312"_s);
    EXPECT_EQ(page().cmbHeaderSize.text(), u"小四"_s);
    EXPECT_TRUE(page().optHeaderLeft.value());
    EXPECT_FALSE(page().chkfooter.checked());
    EXPECT_EQ(page().TxtFooterCon.text(), u"页脚"_s);
    EXPECT_EQ(page().cmbFooterFont.text(), u"仿宋_GB2312"_s);
    EXPECT_EQ(page().cmbFooterSize.text(), u"小四"_s);
    EXPECT_TRUE(page().optFooterRight.value());
    EXPECT_EQ(page().cmbPageClass.text(), u"5"_s);
    EXPECT_EQ(page().cmbPageSign.text(), u"(无)"_s);
    EXPECT_TRUE(page().chkPageIsNot.checked());
}

TEST_F(HeaderFooterPageTest, LoadChangesNothingButTheRightAlignment) {
    change(headerTable, u"是否右对齐", u"是");
    change(headerTable, u"是否带页眉", u"否");
    const QString before = dump(headerTable);
    page();
    EXPECT_EQ(dump(headerTable), before);
    change(headerTable, u"是否右对齐", u"否");
    dialog.Unload();
    EXPECT_TRUE(page().chkPageRight.checked());
    EXPECT_EQ(dump(headerTable), before);
}

TEST_F(HeaderFooterPageTest, WithoutARowLoadFallsBackAndWritesNothing) {
    empty(headerTable);
    EXPECT_EQ(page().TxtHeaderCon.text() + page().TxtFooterCon.text(), QString());
    EXPECT_EQ(page().cmbPageSign.text(), u"......"_s);
    for (const ComboBox* font : {&page().cmbHeaderFont, &page().cmbFooterFont}) {
        EXPECT_EQ(font->text(), u"宋体"_s);
    }
    for (const ComboBox* size : {&page().cmbHeaderSize, &page().cmbFooterSize}) {
        EXPECT_EQ(size->text(), u"小四"_s);
    }
    EXPECT_EQ(page().cmbPageClass.text(), u"3"_s);
    for (const CheckBox* box :
         {&page().chkHeader, &page().chkfooter, &page().chkPageIsNot, &page().chkPageRight}) {
        EXPECT_TRUE(box->checked());
    }
    EXPECT_TRUE(page().optHeaderMiddle.value());
    EXPECT_TRUE(page().optFooterMiddle.value());
    EXPECT_EQ(rowCount(headerTable), 0);
}

TEST_F(HeaderFooterPageTest, EachControlWritesItsField) {
    check({
        {u"chkHeader", [&] { page().chkHeader.click(); }, u"是否带页眉", u"否"_s},
        {u"chkHeader", [&] { page().chkHeader.click(); }, u"是否带页眉", u"是"_s},
        {u"chkfooter", [&] { page().chkfooter.click(); }, u"是否带页脚", u"否"_s},
        {u"chkPageIsNot", [&] { page().chkPageIsNot.click(); }, u"是否显示页码", u"否"_s},
        {u"chkPageRight", [&] { page().chkPageRight.click(); }, u"是否右对齐", u"否"_s},
        {u"optHeaderLeft", [&] { page().optHeaderLeft.click(); }, u"页眉位置", u"左"_s},
        {u"optHeaderRight", [&] { page().optHeaderRight.click(); }, u"页眉位置", u"右"_s},
        {u"optHeaderMiddle", [&] { page().optHeaderMiddle.click(); }, u"页眉位置", u"中"_s},
        {u"optFooterLeft", [&] { page().optFooterLeft.click(); }, u"页脚位置", u"左"_s},
        {u"optFooterRight", [&] { page().optFooterRight.click(); }, u"页脚位置", u"右"_s},
        {u"optFooterMiddle", [&] { page().optFooterMiddle.click(); }, u"页脚位置", u"中"_s},
        {u"cmbHeaderFont", [&] { pick(page().cmbHeaderFont, u"黑体"_s); }, u"页眉字体", u"黑体"_s},
        {u"cmbHeaderSize", [&] { pick(page().cmbHeaderSize, u"五号"_s); }, u"页眉字号", u"五号"_s},
        {u"cmbFooterFont", [&] { pick(page().cmbFooterFont, u"宋体"_s); }, u"页脚字体", u"宋体"_s},
        {u"cmbFooterSize", [&] { pick(page().cmbFooterSize, u"9"_s); }, u"页脚字号", u"9"_s},
        {u"cmbPageClass", [&] { pick(page().cmbPageClass, u"9"_s); }, u"显示级别", u"9"_s},
        {u"TxtHeaderCon",
         [&] {
             page().TxtHeaderCon.type(u"  滨江工程 "_s);
             page().TxtHeaderCon.leave();
         },
         u"页眉内容", u"滨江工程"_s},
        {u"TxtFooterCon",
         [&] {
             page().TxtFooterCon.type(QString());
             page().TxtFooterCon.leave();
         },
         u"页脚内容", QString()},
    });
    EXPECT_EQ(page().TxtHeaderCon.text(), u"  滨江工程 "_s);
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(HeaderFooterPageTest, EachLeaderIsStoredAsItsWordAndShownAsItsEntry) {
    const std::pair<QString, QString> leaders[] = {{u"(无)"_s, u"无"_s},
                                                   {u"......"_s, u"轻虚线"_s},
                                                   {u"------"_s, u"断连线"_s},
                                                   {u"———"_s, u"连连线"_s},
                                                   {u"．．．．．"_s, u"重虚线"_s}};
    for (const auto& [entry, stored] : leaders) {
        pick(page().cmbPageSign, entry);
        EXPECT_EQ(of(u"制表样式"), stored);
        dialog.Unload();
        EXPECT_EQ(page().cmbPageSign.text(), entry);
    }
}

TEST_F(HeaderFooterPageTest, TheTextIsStoredWhenTheBoxLosesFocusAndNotBefore) {
    page().TxtHeaderCon.type(u"新"_s);
    EXPECT_EQ(of(u"页眉内容"), u"页眉"_s);
    page().TxtHeaderCon.leave();
    EXPECT_EQ(of(u"页眉内容"), u"新"_s);
}

TEST_F(HeaderFooterPageTest, UncheckingTheHeaderKeepsItsText) {
    page().chkHeader.click();
    EXPECT_EQ(of(u"页眉内容"), u"页眉"_s);
    EXPECT_EQ(page().TxtHeaderCon.text(), u"页眉"_s);
    EXPECT_TRUE(page().TxtHeaderCon.enabled());
}

TEST_F(HeaderFooterPageTest, ANarrowControlWritesItsOneFieldAndNoOther) {
    page().TxtHeaderCon.type(u"未离开"_s);
    page().chkfooter.click();
    page().optHeaderLeft.click();
    EXPECT_EQ(of(u"页眉内容"), u"页眉"_s);
    page().cmbPageClass.pick(0);
    EXPECT_EQ(of(u"页眉内容"), u"未离开"_s);
}

TEST_F(HeaderFooterPageTest, AHeaderOptionWritesNothingWhileUnselectedAndAFooterOptionDoes) {
    page();
    page().optHeaderLeft.Click();
    EXPECT_EQ(of(u"页眉位置"), u"中"_s);
    page().optFooterLeft.Click();
    EXPECT_EQ(of(u"页脚位置"), u"左"_s);
}

TEST_F(HeaderFooterPageTest, WithoutARowAClickMakesItOfFixedWordsWithoutTheUsersChoice) {
    empty(headerTable);
    page().optFooterRight.click();
    EXPECT_EQ(rowCount(headerTable), 1);
    EXPECT_EQ(of(u"页脚位置"), u"中"_s);
    EXPECT_TRUE(page().optFooterRight.value());
    page().cmbPageClass.pick(2);
    EXPECT_EQ(of(u"页脚位置"), u"右"_s);
}

TEST_F(HeaderFooterPageTest, WithoutARowUncheckingTheFooterStoresYes) {
    empty(headerTable);
    page().chkfooter.click();
    EXPECT_EQ(of(u"是否带页脚"), u"是"_s);
    EXPECT_FALSE(page().chkfooter.checked());
}

TEST_F(HeaderFooterPageTest, EveryControlMakesTheMissingRowOfTheSameWordsAndItsTexts) {
    empty(headerTable);
    page().TxtHeaderCon.type(u" 页眉文字 "_s);
    page().cmbPageSign.setText(u"———"_s);
    const std::vector<std::function<void()>> acts = {
        [&] { page().HeaderFooterRefresh(); },   [&] { page().chkHeader.click(); },
        [&] { page().chkfooter.click(); },       [&] { page().chkPageIsNot.click(); },
        [&] { page().chkPageRight.click(); },    [&] { page().optHeaderLeft.click(); },
        [&] { page().optHeaderRight.click(); },  [&] { page().optHeaderMiddle.click(); },
        [&] { page().optFooterLeft.click(); },   [&] { page().optFooterRight.click(); },
        [&] { page().optFooterMiddle.click(); },
    };
    for (const auto& act : acts) {
        empty(headerTable);
        act();
        EXPECT_EQ(dump(headerTable),
                  u"是否带页眉=是 页眉内容=页眉文字 页眉字体=宋体 页眉字号=小四 页眉位置=中 "
                  "是否带页脚=是 页脚内容= 页脚字体=宋体 页脚字号=小四 页脚位置=中 是否右对齐=是 "
                  "制表样式=轻虚线 显示级别=3 是否显示页码=是"_s);
    }
}

TEST_F(HeaderFooterPageTest, AWordOfNoLeaderKeepsTheEntryAndIsWrittenOverByIt) {
    change(headerTable, u"制表样式", u"波浪线");
    EXPECT_EQ(page().cmbPageSign.text(), QString());
    page().cmbPageClass.pick(0);
    EXPECT_EQ(of(u"制表样式"), u"波浪线"_s);
    pick(page().cmbPageSign, u"------"_s);
    EXPECT_EQ(of(u"制表样式"), u"断连线"_s);
}

TEST_F(HeaderFooterPageTest, AFailureOfTheStoreIsToldOnce) {
    page();
    drop(headerTable);
    page().chkHeader.click();
    page().cmbHeaderFont.pick(0);
    EXPECT_EQ(messages.shown.size(), 2U);
}

TEST_F(HeaderFooterPageTest, ALevelThatIsNoNumberIsTold) {
    page();
    page().cmbPageClass.setText(u"三"_s);
    page().cmbHeaderFont.pick(0);
    EXPECT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(of(u"显示级别"), u"3"_s);
}

} // namespace
} // namespace qvnd::format
