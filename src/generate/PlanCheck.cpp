#include "generate/PlanCheck.h"

#include "generate/ForeignTexts.h"
#include "outline/OutlinePaths.h"
#include "platform/desktop/MessageBoxes.h"
#include "platform/error/IgnoringErrors.h"
#include "platform/error/UnexpectedErrors.h"
#include "platform/files/Paths.h"
#include "platform/word/docfile/container/FormatError.h"
#include "platform/word/docfile/reader/DocumentReader.h"
#include "platform/word/engine/DocumentImport.h"
#include "platform/word/engine/DocumentSource.h"
#include "platform/word/engine/NormalTemplate.h"

#include <algorithm>
#include <cstddef>
#include <exception>
#include <iterator>
#include <utility>

using namespace Qt::StringLiterals;

namespace qvnd::generate {

namespace {

using outline::OutlineNode;
using Kind = PlanFinding::Kind;

// What a kind is called by scripts, and what to do about it.
struct KindText {
    Kind kind;
    const char16_t* name;
    const char16_t* advice;
};

constexpr KindText kindTexts[] = {
    {Kind::missing, u"missing",
     u"把文件放回方案的文件夹，或在工作台中删除这个节点，重新添加文档。"},
    {Kind::oddKey, u"oddKey", u"在工作台中删除这个节点，重新添加文档。"},
    {Kind::open, u"open", u"在文字处理软件中关闭它，再生成。"},
    {Kind::encrypted, u"encrypted", u"用文字处理软件打开它，去掉打开密码，再保存。"},
    {Kind::unreadable, u"unreadable",
     u"用文字处理软件打开它，另存为 Word 97-2003 文档（.doc）；打不开时换一个完好的文件。"},
    {Kind::converted, u"converted",
     u"不影响生成。想让版面不变时，用原来的程序打开它，另存为 Word 97-2003 文档（.doc）。"},
    {Kind::notCarried, u"notCarried",
     u"不影响生成。需要这些内容时，在文档中把它们改成正文或嵌入式图片。"},
    {Kind::emptyFolder, u"emptyFolder", u"在它下面添加文档；不需要这个标题时删除它。"},
    {Kind::foreignCover, u"foreignCover",
     u"打开一次“施工方案设置”，封面就取本方案的名称和单位；这次运行中已打开过的，"
     u"先用它右上角的关闭按钮关闭，再打开。"},
    {Kind::foreignText, u"foreignText",
     u"在“施工方案设置”中改写它；取自封面格式库或设置库的，改写后重新存入库内。"},
    {Kind::emptyPlan, u"emptyPlan", u"在工作台中为方案添加文件夹和文档。"},
    {Kind::runsOn, u"runsOn",
     u"在格式设置中选中“标题前后插入空行”，或把一个文档放到最前面；在同一窗口中再生成一次也可以。"},
};

Kind kindOf(const ForeignText& text) {
    return text.goesWithLoad ? Kind::foreignCover : Kind::foreignText;
}

const KindText& textsOf(Kind kind) {
    return *std::find_if(std::begin(kindTexts), std::end(kindTexts),
                         [kind](const KindText& texts) { return texts.kind == kind; });
}

class Check {
public:
    explicit Check(const PlanCheckParts& parts) : parts_(parts) {}

    std::vector<PlanFinding> run() {
        for (int i = 2; i <= parts_.TrvEdit.Count(); ++i) {
            const OutlineNode& node = parts_.TrvEdit.Item(i);
            if (parts_.goOn && !parts_.goOn(node))
                return std::move(found_);
            if (node.Image() == outline::image::document)
                lookAtDocument(node);
            else
                lookAtFolder(node);
        }
        lookAtPlan();
        return std::move(found_);
    }

private:
    void add(Kind kind, const OutlineNode& node, const QString& what) {
        found_.push_back(
            {kind, node.Key(), node.Text(), what, QString::fromUtf16(textsOf(kind).advice)});
    }

    void addToPlan(Kind kind, const QString& what) {
        const bool hasRoot = parts_.TrvEdit.Count() > 0;
        const OutlineNode* root = hasRoot ? &parts_.TrvEdit.Item(1) : nullptr;
        found_.push_back({kind, root ? root->Key() : QString(), root ? root->Text() : QString(),
                          what, QString::fromUtf16(textsOf(kind).advice)});
    }

    // What the generation asks before it begins.
    void lookAtPlan() {
        if (parts_.TrvEdit.Count() < 2) {
            addToPlan(Kind::emptyPlan, u"没有内容去生成标书！"_s);
            return;
        }
        const bool isAnyNamed =
            std::any_of(found_.begin(), found_.end(),
                        [](const PlanFinding& finding) { return finding.kind == Kind::open; });
        if (parts_.inUse.isAnyOpenIn(parts_.state.gWorkPath))
            addToPlan(Kind::open, u"工作文件夹中有文档在文字处理软件中打开着，这时不能生成。"_s);
        else if (!isAnyNamed && isAnyOpenInPlan())
            addToPlan(Kind::open, u"方案的文件夹中有文档在文字处理软件中打开着，这时不能生成。"_s);
        lookAtSettings();
    }

    // What the settings, which all plans share, would put into this plan's document.
    void lookAtSettings() {
        for (const ForeignText& text :
             textsOfOtherPlans(parts_.state, parts_.TrvEdit.Item(1).Key()))
            addToPlan(kindOf(text), text.what);
    }

    bool isAnyOpenInPlan() const {
        bool isOpen = false;
        ignoringErrors([&] {
            isOpen = parts_.inUse.isAnyOpenIn(
                store::planFolder(parts_.state, parts_.TrvEdit.Item(1).Key()));
        });
        return isOpen;
    }

    void lookAtFolder(const OutlineNode& node) {
        if (node.Child() == nullptr)
            add(Kind::emptyFolder, node, u"文件夹是空的，生成后只有一个标题。"_s);
        const bool isFirst = std::exchange(isFirstInText_, false);
        const bool isLast = &node == &parts_.TrvEdit.Item(parts_.TrvEdit.Count());
        if (isFirst && parts_.firstHeadingRunsOn && !isLast)
            add(Kind::runsOn, node,
                u"它是第一个节点，没有正文，下一个标题会接在它的标题后面，成为一行。"_s);
    }

    // A document that stays out ends no paragraph.
    void lookAtDocument(const OutlineNode& node) {
        const std::size_t before = found_.size();
        look(node);
        if (std::none_of(found_.begin() + static_cast<std::ptrdiff_t>(before), found_.end(),
                         [](const PlanFinding& finding) { return finding.keepsDocumentOut(); }))
            isFirstInText_ = false;
    }

    void look(const OutlineNode& node) {
        QString path;
        try {
            path = outline::documentPath(parts_.state, parts_.TrvEdit.Item(1).Key(), node.Key());
        } catch (const RunTimeError& refusal) {
            add(Kind::oddKey, node, desktop::descriptionOf(refusal) + u"。"_s);
            return;
        }
        if (!parts_.state.gFso->FileExists(path)) {
            add(Kind::missing, node, u"找不到文件“"_s + path + u"”。"_s);
            return;
        }
        if (parts_.inUse.isDocumentOpen(path))
            add(Kind::open, node, u"文档在文字处理软件中打开着，这时不能生成。"_s);
        read(node, files::toPath(path));
    }

    void read(const OutlineNode& node, const std::filesystem::path& path) {
        try {
            word::ImportNotes notes;
            parts_.longWork([&] { notes = bringIn(word::readDocument(path)); });
            addNotCarried(node, notes);
        } catch (const word::FormatError& refusal) {
            const bool isLocked = refusal.kind() == word::FormatError::Kind::encrypted;
            readForeign(node, path, isLocked ? Kind::encrypted : Kind::unreadable);
        } catch (const std::exception& refusal) {
            add(Kind::unreadable, node, desktop::descriptionOf(runTimeErrorOf(refusal)));
        }
    }

    // As the door of the engine reads what our own reader refuses.
    void readForeign(const OutlineNode& node, const std::filesystem::path& path, Kind refused) {
        try {
            const word::DocumentReading document =
                word::readConverting(path, parts_.documents, parts_.longWork);
            if (!document.conversion.empty())
                add(Kind::converted, node, QString::fromStdU16String(document.conversion));
            word::ImportNotes notes;
            parts_.longWork([&] { notes = bringIn(document.content); });
            addNotCarried(node, notes);
        } catch (const std::exception& refusal) {
            add(refused, node, desktop::descriptionOf(runTimeErrorOf(refusal)));
        }
    }

    // What stays behind.
    word::ImportNotes bringIn(const word::DocumentContent& document) {
        word::ImportNotes notes;
        word::importDocument(target_.tables, names_, document, notes);
        return notes;
    }

    void addNotCarried(const OutlineNode& node, const word::ImportNotes& notes) {
        for (const std::u16string& line : notes.leftOut)
            add(Kind::notCarried, node, QString::fromStdU16String(line));
        if (!notes.smartTags.empty() && !std::exchange(areSmartTagsTold_, true))
            add(Kind::notCarried, node, QString::fromStdU16String(notes.smartTags));
    }

    const PlanCheckParts& parts_;
    // What generating would put the documents into; without their texts.
    word::DocumentContent target_ = word::normalTemplate();
    word::BookmarkNames names_;
    std::vector<PlanFinding> found_;
    bool areSmartTagsTold_ = false;
    bool isFirstInText_ = true; // nothing ahead of the node ends a paragraph
};

} // namespace

bool PlanFinding::keepsDocumentOut() const {
    return kind == Kind::missing || kind == Kind::oddKey || kind == Kind::encrypted ||
           kind == Kind::unreadable;
}

bool PlanFinding::keepsFromGenerating() const {
    return kind == Kind::open || kind == Kind::emptyPlan;
}

QString adviceFor(const ForeignText& text) {
    return QString::fromUtf16(textsOf(kindOf(text)).advice);
}

QString nameOf(PlanFinding::Kind kind) { return QString::fromUtf16(textsOf(kind).name); }

std::vector<PlanFinding> checkPlan(const PlanCheckParts& parts) { return Check(parts).run(); }

} // namespace qvnd::generate
