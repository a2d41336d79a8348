#pragma once

#include "platform/word/docfile/document/DocumentContent.h"
#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/docfile/writer/DocumentWriter.h"
#include "platform/word/engine/NormalTemplate.h"
#include "platform/word/engine/StoryBuilder.h"

#include <filesystem>
#include <memory>
#include <string>

namespace qvnd::bench {

// Pages as a planner writes them for one step of a construction: a bold title, paragraphs of text,
// a numbered list, a table with a head row. Six parts are a page or three, about 32 kB as a file.
class SiteDocument {
public:
    static constexpr int usualParts = 6;

    // `rows`: of each part's table.
    explicit SiteDocument(int number, int parts = usualParts, int rows = 6)
        : content_(word::normalTemplate()), rows_(rows) {
        addList();
        word::Story story;
        word::StoryBuilder builder(story);
        paragraph(builder, u"第" + decimal(number) + u"项 施工方法及技术措施", bold(), {});
        for (int part = 1; part <= parts; ++part)
            addPart(builder, part);
        content_.main = {{std::make_shared<const word::Story>(std::move(story)), 0, 0}};
        content_.main[0].length = content_.main[0].fragment->size();
        content_.sections[0].length = content_.main[0].length;
    }

    void saveAs(const std::filesystem::path& path) const {
        word::DocumentWriter().saveAs(path, content_);
    }

private:
    static constexpr int columns = 5;

    static std::u16string decimal(int number) {
        const std::string digits = std::to_string(number);
        return {digits.begin(), digits.end()};
    }

    word::Bytes bold() const { return word::withSprm8({}, word::sprm::CFBold, 1); }

    void paragraph(word::StoryBuilder& builder, const std::u16string& text,
                   const word::Bytes& characters, const word::Bytes& paragraph,
                   char16_t mark = u'\r') {
        const auto look = content_.tables.lists.intern(characters);
        builder.text(text, look);
        builder.mark(mark, {0, content_.tables.lists.intern(paragraph)}, look);
    }

    void addPart(word::StoryBuilder& builder, int part) {
        paragraph(builder, decimal(part) + u".1 施工准备", bold(), {});
        const word::Bytes indented = word::withSprm16({}, word::sprm::PDxaLeft1, 420);
        for (int i = 0; i < 3; ++i)
            paragraph(
                builder,
                u"施工前组织有关人员熟悉图纸，复核轴线与标高，编制材料进场计划，对班组进行技术"
                u"与安全交底；机具进场后逐台检查试运转，合格后方可使用。雨期施工应备足排水设备，"
                u"基坑四周设置截水沟与集水井，每日记录水位与边坡变形，发现异常立即停工并上报。",
                {}, indented);
        const word::Bytes listed =
            word::withSprm8(word::withSprm16({}, word::sprm::PIlfo, 1), word::sprm::PIlvl, 0);
        for (const char16_t* step : {u"测量放线并经监理复核", u"钢筋绑扎及隐蔽验收",
                                     u"模板安装、加固与校正", u"混凝土浇筑、振捣与养护"})
            paragraph(builder, step, {}, listed);
        addTable(builder);
    }

    void addTable(word::StoryBuilder& builder) {
        for (int row = 0; row < rows_; ++row) {
            for (int column = 0; column < columns; ++column)
                paragraph(builder,
                          row == 0 ? u"项目" + decimal(column + 1) : decimal(row * 100 + column),
                          row == 0 ? bold() : word::Bytes(),
                          word::withSprm8({}, word::sprm::PFInTable, 1), u'\a');
            paragraph(builder, {}, {}, rowDefinition(), u'\a');
        }
        paragraph(builder, {}, {}, {});
    }

    static word::Bytes rowDefinition() {
        word::LittleEndianWriter operand;
        operand.u16(2 + 2 * (columns + 1) + 20 * columns);
        operand.u8(columns);
        for (unsigned i = 0; i <= columns; ++i)
            operand.u16(i * 1600);
        operand.zeros(std::size_t{20} * columns);
        const word::Bytes inTable = word::withSprm8({}, word::sprm::PFInTable, 1);
        return word::withSprm(word::withSprm8(inTable, word::sprm::PFTtp, 1), word::sprm::TDefTable,
                              operand.data());
    }

    void addList() {
        word::ListDefinition list;
        list.lsid = 1001;
        list.linkedStyles.fill(word::StyleDefinition::none);
        list.levels.resize(9);
        for (std::size_t i = 0; i < list.levels.size(); ++i) {
            list.levels[i].head[6] = 1; // the place of the number in the text
            list.levels[i].text = {static_cast<char16_t>(i), u'）'};
        }
        content_.tables.listDefinitions = {list};
        content_.tables.listOverrides = {{list.lsid, 0, 0, {}}};
    }

    word::DocumentContent content_;
    int rows_;
};

} // namespace qvnd::bench
