#include "tools/GenerateOptions.h"

#include "platform/files/Trim.h"
#include "tools/Arguments.h"
#include "tools/PageNumberChoice.h"
#include "tools/UsageError.h"

using namespace Qt::StringLiterals;

namespace qvnd::tools {

namespace {

constexpr int widestIndent = 100;
constexpr int onlyLevelOne = 2; // the multi-level mode that has a text
// What the two boxes of the multi-level dialog hold at first.
const QString initialLevelText = u"第章"_s;

const QStringList& childStyles() {
    static const QStringList styles{u"无"_s, u"1、"_s, u"1."_s, u"A."_s,
                                    u"1)"_s, u"a)"_s,  u"A)"_s, u"I."_s};
    return styles;
}

int within(const Arguments& arguments, const QString& option, int otherwise, int most) {
    const int number = arguments.number(option, otherwise);
    if (number < 0 || number > most)
        throw UsageError(u"选项 %1 的值应在 0 到 %2 之间"_s.arg(option).arg(most));
    return number;
}

PageSource pageSource(const QString& name) {
    if (name == u"auto")
        return PageSource::automatic;
    if (name == u"office")
        return PageSource::office;
    if (name == u"layout" || name == u"estimate")
        return PageSource::layout;
    throw UsageError(u"选项 --pages 的值是 auto、layout 或 office"_s);
}

// Empty while nothing is picked in the dialog's list.
QString childStyle(const Arguments& arguments) {
    QString style = arguments.option(u"--children-numbered"_s);
    if (!style.isEmpty() && !childStyles().contains(style))
        throw UsageError(
            u"选项 --children-numbered 的值是下列之一，或者空（\"\"，没有选择）：%1"_s.arg(
                childStyles().join(u' ')));
    return style;
}

} // namespace

GenerateOptions::GenerateOptions(const QStringList& words) {
    const Arguments arguments(words,
                              {{u"--blank-lines"_s, u"--first-run"_s},
                               {u"--multilevel"_s, u"--multilevel-text"_s, u"--children-numbered"_s,
                                u"--indent"_s, u"--pages"_s, u"--fonts"_s}});
    arguments.expectPositions(1, 1);
    plan = files::Trim(arguments.position(0));
    switches.gBlankLineAroundTitle = arguments.has(u"--blank-lines"_s);
    switches.gMultLevelOn = arguments.hasOption(u"--multilevel"_s);
    switches.gMultLevelMode = within(arguments, u"--multilevel"_s, 0, 2);
    if (switches.gMultLevelMode == onlyLevelOne)
        switches.gMultLevelText = arguments.option(u"--multilevel-text"_s, initialLevelText);
    switches.gChildDocAsNumber = arguments.hasOption(u"--children-numbered"_s);
    if (switches.gChildDocAsNumber)
        childStyle = tools::childStyle(arguments);
    childIndent = QString::number(within(arguments, u"--indent"_s, 2, widestIndent));
    isFirstRun = arguments.has(u"--first-run"_s);
    pages = pageSource(arguments.option(u"--pages"_s, u"auto"_s));
    fonts = fontChoice(arguments);
}

QString GenerateOptions::parameters() {
    return u"方案 [--blank-lines] [--multilevel 0|1|2 [--multilevel-text 文字]] "
           "[--children-numbered 样式|\"\" [--indent 字符数]] [--first-run] "
           "[--pages auto|layout|office] [--fonts here]"_s;
}

} // namespace qvnd::tools
