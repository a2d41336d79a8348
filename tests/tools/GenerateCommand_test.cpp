#include "platform/files/Paths.h"
#include "platform/jet/DBEngine.h"
#include "platform/word/docfile/writer/DocumentWriter.h"
#include "platform/word/engine/NormalTemplate.h"
#include "support/ChangedVariable.h"
#include "support/FakeOffice.h"
#include "support/Gif.h"
#include "support/Images.h"
#include "support/LossyDocument.h"
#include "support/Qvndctl.h"

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace qvnd;
using namespace qvnd::tools;

namespace {

// A plan 桥 with a document and a chapter that holds another one, in a program folder of its own.
class GenerateTool : public Qvndctl {
protected:
    GenerateTool() {
        writeDocument(u"源/说明.doc"_s);
        expectDone({u"plan"_s, u"create"_s, u"桥"_s});
        document(u"桥"_s);
        expectDone({u"outline"_s, u"add-folder"_s, u"桥"_s, u"桥"_s, u"概况"_s, u"--below"_s});
        chapter = out.trimmed();
        document(chapter);
    }
    void document(const QString& parent) {
        expectDone({u"outline"_s, u"add-document"_s, u"桥"_s, parent, folder.path(u"源/说明.doc"_s),
                    u"--below"_s});
        lastKey = out.trimmed();
        firstKey = firstKey.isEmpty() ? lastKey : firstKey;
    }
    QJsonObject generated(const QStringList& options = {}) {
        expectDone(QStringList{u"--json"_s, u"generate"_s, u"桥"_s, u"--pages"_s, u"layout"_s} +
                   options);
        return json().toObject();
    }
    // As a row of a plan that someone else has made.
    void addDocumentRow(const QString& key, const QString& name) const {
        jet::DBEngine engine;
        const auto db = engine.Workspaces(0).OpenDatabase(
            folder.path(u"home/Sys/用户模板/Db_UsTemplate.mdb"_s));
        const auto rows = db->OpenRecordset(u"Select * from 桥"_s);
        rows->AddNew();
        rows->Set(u"名称", name);
        rows->Set(u"Key", key);
        rows->Set(u"是否文档", u"是"_s);
        rows->Update();
    }
    QString work(const QString& name) const { return folder.path(u"home/工程文档管理/"_s + name); }
    QString text() {
        expectDone({u"doc"_s, u"text"_s, work(u"施工方案.doc"_s)});
        return out;
    }

    QString chapter;
    QString firstKey; // of the documents
    QString lastKey;
};

} // namespace

TEST_F(GenerateTool, ARowWhoseKeyIsNoneIsNamedAndAllOthersComeInWithAndWithoutJson) {
    addDocumentRow(u"桥.a"_s, u"外来"_s);
    const QStringList words{u"generate"_s, u"桥"_s, u"--pages"_s, u"estimate"_s};
    EXPECT_EQ(qvndctl(words), ExitStatus::refused) << err.toStdString();
    EXPECT_TRUE(out.contains(u"3 个文档放入 2 个"_s)) << out.toStdString();
    EXPECT_TRUE(out.contains(u"没有放入：桥.a 外来："_s)) << out.toStdString();
    EXPECT_EQ(qvndctl(QStringList{u"--json"_s} + words), ExitStatus::refused);
    const QJsonObject told = json().toObject();
    EXPECT_EQ(told[u"inserted"_s].toInt(), 2) << out.toStdString();
    EXPECT_EQ(told[u"check"_s].toArray().last()[u"kind"_s].toString(), u"oddKey"_s);
    EXPECT_EQ(qvndctl({u"check"_s, u"桥"_s}), ExitStatus::refused);
    EXPECT_TRUE(out.contains(u"桥.a 外来"_s)) << out.toStdString();
}

TEST_F(GenerateTool, TellsWhereTheDocumentLiesAndWhatIsInIt) {
    const QJsonObject told = generated();
    EXPECT_EQ(told.keys(),
              QStringList({u"changed"_s, u"check"_s, u"converted"_s, u"documents"_s, u"failed"_s,
                           u"foreign"_s, u"headings"_s, u"inserted"_s, u"leftOut"_s, u"messages"_s,
                           u"missing"_s, u"nodes"_s, u"output"_s, u"pageNumbers"_s, u"pages"_s,
                           u"seconds"_s, u"unfinished"_s}));
    EXPECT_EQ(told[u"output"_s].toString(), work(u"施工方案.doc"_s));
    EXPECT_TRUE(told[u"unfinished"_s].isNull());
    EXPECT_EQ(told[u"nodes"_s].toInt(), 3);
    EXPECT_EQ(told[u"documents"_s].toInt(), 2);
    EXPECT_EQ(told[u"headings"_s].toInt(), 3);
    EXPECT_EQ(told[u"inserted"_s].toInt(), 2);
    EXPECT_TRUE(told[u"missing"_s].toArray().isEmpty());
    EXPECT_TRUE(told[u"leftOut"_s].toArray().isEmpty());
    EXPECT_TRUE(told[u"check"_s].toArray().isEmpty());
    EXPECT_GE(told[u"pages"_s].toInt(), 4); // cover, contents, two chapters
    EXPECT_TRUE(told[u"messages"_s].toArray().isEmpty());
    EXPECT_GT(told[u"seconds"_s].toDouble(), 0);
    EXPECT_EQ(err, QString()); // no bar where standard error is no terminal
    EXPECT_TRUE(folder.exists(u"home/工程文档管理/施工方案.doc"_s));
}

TEST_F(GenerateTool, ADocumentThatBearsAnotherPlansNameIsToldSo) {
    expectDone({u"plan"_s, u"create"_s, u"路"_s});
    expectDone({u"format"_s, u"load"_s, u"路"_s});
    const QString told = u"封面的工程名称“路”属于另一个方案“路”。"_s;
    EXPECT_EQ(generated()[u"foreign"_s].toArray(), QJsonArray{told}) << out.toStdString();
    expectDone({u"generate"_s, u"桥"_s, u"--pages"_s, u"layout"_s});
    EXPECT_TRUE(out.contains(told)) << out.toStdString();
    EXPECT_EQ(out.count(u"format load"_s), 1) << out.toStdString();
    expectDone({u"format"_s, u"load"_s, u"桥"_s});
    EXPECT_TRUE(generated()[u"foreign"_s].toArray().isEmpty()) << out.toStdString();
}

TEST_F(GenerateTool, HeadingsAreNumberedByTheOutline) {
    generated();
    const QString lines = text();
    EXPECT_TRUE(lines.contains(u"第一章 说明\n"_s)) << lines.toStdString();
    EXPECT_TRUE(lines.contains(u"第二章 概况\n"_s)) << lines.toStdString();
    EXPECT_TRUE(lines.contains(u"第一节 说明\n"_s)) << lines.toStdString();
}

TEST_F(GenerateTool, OptionsReachTheNumbering) {
    generated({u"--multilevel"_s, u"1"_s});
    EXPECT_TRUE(text().contains(u"2.1 说明\n"_s)) << out.toStdString();
    document(lastKey);
    generated({u"--children-numbered"_s, u"a)"_s});
    EXPECT_TRUE(text().contains(u"a) 说明\n"_s)) << out.toStdString();
}

TEST_F(GenerateTool, WhatADocumentLosesIsToldAndReported) {
    test::writeWithHeader(folder.path(u"home/Sys/用户模板/桥/"_s + lastKey + u".doc"_s));
    const QJsonObject told = generated();
    const QString loss = lastKey + u".doc："_s + test::lossOfHeader;
    EXPECT_EQ(told[u"messages"_s].toArray(), QJsonArray{loss});
    EXPECT_TRUE(err.contains(loss)) << err.toStdString();
}

TEST_F(GenerateTool, WhatGotAnotherNameIsReportedAndNoMessage) {
    word::DocumentContent content = word::normalTemplate();
    content.bookmarks = {{u"图", 0, 1, 0}};
    for (const QString& key : {firstKey, lastKey})
        word::DocumentWriter().saveAs(
            files::toPath(folder.path(u"home/Sys/用户模板/桥/"_s + key + u".doc"_s)), content);
    const QJsonObject told = generated();
    const QString what = u"书签 1 个改了名（如“图”改为“图_2”），"
                         u"因为别的文档已有同名的书签，引用它们的地方已一并更改"_s;
    const QJsonArray changed = told[u"changed"_s].toArray();
    ASSERT_EQ(changed.size(), 1);
    EXPECT_EQ(changed[0][u"key"_s].toString(), lastKey);
    EXPECT_EQ(changed[0][u"reason"_s].toString(), what);
    EXPECT_TRUE(told[u"leftOut"_s].toArray().isEmpty());
    EXPECT_TRUE(told[u"messages"_s].toArray().isEmpty());
    expectDone({u"generate"_s, u"桥"_s, u"--pages"_s, u"estimate"_s});
    EXPECT_TRUE(out.contains(u"编号或名称有变："_s + lastKey)) << out.toStdString();
    EXPECT_TRUE(out.contains(what)) << out.toStdString();
}

TEST_F(GenerateTool, ADocumentThatDidNotComeInIsNamedWithItsReasonAndTheRestIsGenerated) {
    QFile::remove(folder.path(u"home/Sys/用户模板/桥/"_s + lastKey + u".doc"_s));
    EXPECT_EQ(qvndctl({u"--json"_s, u"generate"_s, u"桥"_s, u"--pages"_s, u"layout"_s}),
              ExitStatus::refused);
    const QJsonObject told = json().toObject();
    EXPECT_EQ(told[u"documents"_s].toInt(), 2);
    EXPECT_EQ(told[u"check"_s].toArray().size(), 1);
    EXPECT_EQ(told[u"inserted"_s].toInt(), 1);
    const QJsonArray missing = told[u"missing"_s].toArray();
    ASSERT_EQ(missing.size(), 1);
    EXPECT_EQ(missing.at(0)[u"key"_s].toString(), lastKey);
    EXPECT_EQ(missing.at(0)[u"name"_s].toString(), u"说明"_s);
    EXPECT_TRUE(missing.at(0)[u"document"_s].toBool());
    const QString reason = missing.at(0)[u"reason"_s].toString();
    EXPECT_TRUE(reason.contains(lastKey + u".doc"_s)) << reason.toStdString();
    EXPECT_EQ(told[u"messages"_s].toArray(),
              QJsonArray{reason + u"\n文档：说明（%1）"_s.arg(lastKey)});
    EXPECT_TRUE(err.contains(reason));
    EXPECT_TRUE(text().contains(u"第二章 概况\n"_s)) << out.toStdString();

    EXPECT_EQ(qvndctl({u"generate"_s, u"桥"_s, u"--pages"_s, u"layout"_s}), ExitStatus::refused);
    EXPECT_TRUE(out.contains(u"3 个节点，2 个文档放入 1 个，1 个没有放入，"_s))
        << out.toStdString();
    EXPECT_TRUE(out.contains(u"没有放入：%1 说明：%2\n"_s.arg(lastKey, reason)))
        << out.toStdString();
}

TEST_F(GenerateTool, ItSaysWhereThePageNumbersComeFrom) {
    EXPECT_EQ(generated()[u"pageNumbers"_s].toString(), u"layout"_s);
    expectDone({u"generate"_s, u"桥"_s});
    EXPECT_TRUE(out.contains(u"2 个文档全部放入，"_s)) << out.toStdString();
    EXPECT_TRUE(out.contains(u"（页码由本程序排出）"_s)) << out.toStdString();
}

TEST_F(GenerateTool, WhereTheOfficeSuiteFailsOurOwnLayoutGivesTheNumbersAndThatIsTold) {
    generated();
    const QString expected = text();
    const test::FakeOffice office("exit 1\n");
    folder.makeFolder("bin");
    ASSERT_TRUE(QFile::link(office.settings().program, folder.path("bin/soffice")));
    const test::ChangedVariable path("PATH", folder.path("bin").toUtf8() + ":/usr/bin:/bin");
    expectDone({u"--json"_s, u"generate"_s, u"桥"_s, u"--pages"_s, u"office"_s});
    const QJsonObject told = json().toObject();
    EXPECT_EQ(office.starts(), 1);
    EXPECT_EQ(told[u"pageNumbers"_s].toString(), u"layout"_s);
    EXPECT_TRUE(told[u"unfinished"_s].isNull());
    const QJsonArray messages = told[u"messages"_s].toArray();
    ASSERT_EQ(messages.size(), 1) << err.toStdString();
    EXPECT_TRUE(messages[0].toString().startsWith(
        u"办公套件没有排出页码，页码由本程序排出。\n办公套件无法转换文件"_s))
        << messages[0].toString().toStdString();
    EXPECT_EQ(text(), expected);
}

TEST_F(GenerateTool, ItRunsAsALaterRunOfAWindowUnlessTheFirstIsAskedFor) {
    expectDone({u"plan"_s, u"create"_s, u"路"_s});
    expectDone({u"outline"_s, u"add-folder"_s, u"路"_s, u"路"_s, u"概况"_s, u"--below"_s});
    expectDone({u"outline"_s, u"add-folder"_s, u"路"_s, u"路"_s, u"部署"_s, u"--below"_s});
    expectDone({u"format"_s, u"set"_s, u"章节设置表"_s, u"置页头"_s, u"否"_s});
    expectDone({u"generate"_s, u"路"_s, u"--pages"_s, u"layout"_s});
    EXPECT_TRUE(text().contains(u"第一章 概况\n"_s)) << out.toStdString();
    expectDone({u"generate"_s, u"路"_s, u"--first-run"_s, u"--pages"_s, u"layout"_s});
    EXPECT_TRUE(text().contains(u"第一章 概况第二章 部署\n"_s)) << out.toStdString();
}

TEST_F(GenerateTool, TheContentsOfAFinishedDocumentAreRebuiltAndTheFileStaysAsItIs) {
    generated();
    const QByteArray before = folder.read(u"home/工程文档管理/施工方案.doc"_s);
    expectDone({u"--json"_s, u"contents"_s, u"rebuild"_s});
    const QJsonObject told = json().toObject();
    EXPECT_EQ(told[u"output"_s].toString(), work(u"施工方案.doc"_s));
    EXPECT_EQ(told[u"saved"_s], QJsonValue(false));
    EXPECT_EQ(folder.read(u"home/工程文档管理/施工方案.doc"_s), before);
}

TEST_F(GenerateTool, RebuildingContentsSaysWhatIsMissing) {
    EXPECT_EQ(qvndctl({u"contents"_s, u"rebuild"_s}), ExitStatus::refused);
    EXPECT_EQ(err, u"还没生成标书!\n"_s);
    folder.write(u"home/工程文档管理/别的.txt"_s, "x");
    EXPECT_EQ(qvndctl({u"contents"_s, u"rebuild"_s}), ExitStatus::refused);
    EXPECT_TRUE(err.contains(u"施工方案.doc"_s)) << err.toStdString();
    QFile::copy(folder.path(u"源/说明.doc"_s), work(u"施工方案.doc"_s));
    EXPECT_EQ(qvndctl({u"contents"_s, u"rebuild"_s}), ExitStatus::refused);
    EXPECT_EQ(err, u"“施工方案.doc”里没有目录，请重新生成施工方案。\n"_s);
    EXPECT_EQ(qvndctl({u"contents"_s, u"rebuild"_s, u"桥"_s}), ExitStatus::wrongUsage);
}

TEST_F(GenerateTool, AGifComesOntoTheCover) {
    const word::Bytes gif = test::gifOfRedThenBlue();
    folder.write(
        u"home/Sys/图片库/标志.gif"_s,
        QByteArray(reinterpret_cast<const char*>(gif.data()), static_cast<qsizetype>(gif.size())));
    expectDone({u"format"_s, u"set"_s, u"封面表"_s, u"图片"_s, u"标志.gif"_s});
    EXPECT_TRUE(generated()[u"messages"_s].toArray().isEmpty()) << err.toStdString();
    expectDone({u"--json"_s, u"doc"_s, u"info"_s, work(u"施工方案.doc"_s)});
    EXPECT_EQ(json()[u"pictures"_s].toInt(), 1);
}

TEST_F(GenerateTool, ACoverPictureWithoutWidthOrHeightIsToldInWords) {
    const word::Bytes png = test::png(96, 96);
    folder.write(
        u"home/Sys/图片库/标志.png"_s,
        QByteArray(reinterpret_cast<const char*>(png.data()), static_cast<qsizetype>(png.size())));
    expectDone({u"format"_s, u"set"_s, u"封面表"_s, u"图片"_s, u"标志.png"_s});
    expectDone({u"format"_s, u"set"_s, u"封面表"_s, u"图片宽度"_s, u"0"_s});
    expectDone({u"format"_s, u"set"_s, u"封面表"_s, u"图片高度"_s, u"0"_s});
    const QJsonArray messages = generated()[u"messages"_s].toArray();
    ASSERT_EQ(messages.size(), 2);
    EXPECT_EQ(messages.at(0).toString(),
              u"图片的高度要大于 0、不超过 55.88 厘米。没有设置，图片保持原来的高度。"_s);
    EXPECT_EQ(messages.at(1).toString(),
              u"图片的宽度要大于 0、不超过 55.88 厘米。没有设置，图片保持原来的宽度。"_s);
}

TEST_F(GenerateTool, ADocumentHeldOpenRefusesTheCommand) {
    generated();
    folder.write(u"home/工程文档管理/.~lock.施工方案.doc#"_s, ",user,another-machine,,;");
    EXPECT_EQ(qvndctl({u"generate"_s, u"桥"_s}), ExitStatus::refused);
    EXPECT_TRUE(err.contains(u"对不起，请您先关闭Word文档。"_s)) << err.toStdString();
    EXPECT_EQ(out, QString());
}

TEST_F(GenerateTool, ARefusedRunStillTellsItsCheckAndWhyItWasRefused) {
    folder.write(u"home/Sys/用户模板/桥/.~lock.%1.doc#"_s.arg(lastKey), ",user,another-machine,,;");
    EXPECT_EQ(qvndctl({u"--json"_s, u"generate"_s, u"桥"_s, u"--pages"_s, u"layout"_s}),
              ExitStatus::refused);
    const QJsonObject told = json().toObject();
    EXPECT_TRUE(told[u"output"_s].isNull()) << out.toStdString();
    EXPECT_EQ(told[u"unfinished"_s].toString(), u"没有开始生成，原因见提示。"_s);
    ASSERT_FALSE(told[u"check"_s].toArray().isEmpty()) << out.toStdString();
    EXPECT_EQ(told[u"check"_s][0][u"key"_s].toString(), lastKey);
    ASSERT_EQ(told[u"messages"_s].toArray().size(), 1);
    EXPECT_TRUE(told[u"messages"_s][0].toString().startsWith(u"对不起，请您先关闭Word文档。"_s));
}

TEST_F(GenerateTool, BlankLinesKeepTheHeadingOfAFirstRunFromRunningOn) {
    expectDone({u"plan"_s, u"create"_s, u"路"_s});
    for (const QString& name : {u"概况"_s, u"结论"_s})
        expectDone({u"outline"_s, u"add-folder"_s, u"路"_s, u"路"_s, name, u"--below"_s});
    const auto runsOn = [this](const QStringList& options) {
        expectDone(QStringList{u"--json"_s, u"generate"_s, u"路"_s, u"--first-run"_s} + options);
        const QJsonArray check = json()[u"check"_s].toArray();
        return std::any_of(check.begin(), check.end(), [](const QJsonValue& finding) {
            return finding[u"kind"_s].toString() == u"runsOn";
        });
    };
    EXPECT_TRUE(runsOn({}));
    EXPECT_FALSE(runsOn({u"--blank-lines"_s}));
}

TEST_F(GenerateTool, APlanWithoutNodesIsRefused) {
    expectDone({u"plan"_s, u"create"_s, u"空"_s});
    EXPECT_EQ(qvndctl({u"generate"_s, u"空"_s}), ExitStatus::refused);
    EXPECT_EQ(err, u"没有内容去生成标书！\n"_s);
}

TEST_F(GenerateTool, AnUnknownPlanIsRefusedAndAWrongOptionIsWrongUsage) {
    EXPECT_EQ(qvndctl({u"generate"_s, u"没有"_s}), ExitStatus::refused);
    EXPECT_TRUE(err.contains(u"没有"_s));
    EXPECT_EQ(qvndctl({u"generate"_s, u"桥"_s, u"--multilevel"_s, u"4"_s}), ExitStatus::wrongUsage);
    EXPECT_EQ(qvndctl({u"generate"_s}), ExitStatus::wrongUsage);
}
