#include "generate/GenerationWorld.h"

#include <new>
#include <stdexcept>

using namespace Qt::StringLiterals;
using namespace qvnd;
using namespace qvnd::test;
using qvnd::generate::BuildOutcome;

namespace {

// The statement that fails is the cover's first font; the next one sets the size.
class ErrorsInTheCommand : public GenerationWorld {
protected:
    ErrorsInTheCommand() { smallPlan(); }

    BuildOutcome failingWith(long number) {
        log.failAt("Selection.Font.Name = 黑体", number, u"应用程序的说明");
        return build();
    }
    std::string behindTheFailure() const {
        return linesBetween("Selection.Font.Name = 黑体", "Selection.Font.Bold");
    }
};

} // namespace

TEST_F(ErrorsInTheCommand, NumberZeroTakesTheStopPathWithoutAMessage) {
    EXPECT_EQ(failingWith(0), BuildOutcome::stopped);
    EXPECT_EQ(behindTheFailure(), stopPath);
}

TEST_F(ErrorsInTheCommand, AVanishedServerTakesTheStopPathWithoutAMessage) {
    EXPECT_EQ(failingWith(error::automationServerGone), BuildOutcome::stopped);
    EXPECT_EQ(behindTheFailure(), stopPath);
}

TEST_F(ErrorsInTheCommand, AnUnsetObjectIsPassedOver) {
    EXPECT_EQ(failingWith(error::objectNotSet), BuildOutcome::finished);
    EXPECT_EQ(behindTheFailure(), "Selection.Font.Size = 26\n");
}

TEST_F(ErrorsInTheCommand, AMissingTableIsPassedOver) {
    EXPECT_EQ(failingWith(error::tableNotFound), BuildOutcome::finished);
    EXPECT_EQ(behindTheFailure(), "Selection.Font.Size = 26\n");
}

TEST_F(ErrorsInTheCommand, AMissingFieldIsPassedOver) {
    EXPECT_EQ(failingWith(error::itemNotFound), BuildOutcome::finished);
    EXPECT_EQ(behindTheFailure(), "Selection.Font.Size = 26\n");
}

TEST_F(ErrorsInTheCommand, AMissingMemberAsksToLeaveWordAlone) {
    EXPECT_EQ(failingWith(error::memberNotFound), BuildOutcome::finished);
    EXPECT_EQ(
        behindTheFailure(),
        "dlgTB.hide\n"
        "message [information] 请选择整个Word文档，在生成标书的时候请不要单击或关闭Word程序！\n"
        "dlgTB.show\nApplication.Activate\nSelection.Font.Size = 26\n");
}

TEST_F(ErrorsInTheCommand, AFailedRemoteCallAsksToLeaveWordAlone) {
    EXPECT_EQ(failingWith(error::remoteCallFailed), BuildOutcome::finished);
    EXPECT_EQ(
        behindTheFailure(),
        "dlgTB.hide\n"
        "message [information] 请选择整个Word文档，在生成标书的时候请不要单击或关闭Word程序！\n"
        "dlgTB.show\nApplication.Activate\nSelection.Font.Size = 26\n");
}

TEST_F(ErrorsInTheCommand, AnyOtherErrorShowsItsOwnDescriptionWithoutAnIcon) {
    EXPECT_EQ(failingWith(4198), BuildOutcome::finished);
    EXPECT_EQ(behindTheFailure(), "dlgTB.hide\nmessage [none] 应用程序的说明\ndlgTB.show\n"
                                  "Application.Activate\nSelection.Font.Size = 26\n");
}

TEST_F(ErrorsInTheCommand, WhatIsNoRunTimeErrorIsToldAndTheRunGoesOn) {
    log.at("Selection.Font.Name = 黑体", [] { throw std::invalid_argument("two of one name"); });
    EXPECT_EQ(build(), BuildOutcome::finished);
    EXPECT_EQ(behindTheFailure(),
              "dlgTB.hide\nmessage [none] 程序内部出错，这一步没有完成。（two of one name）\n"
              "dlgTB.show\nApplication.Activate\nSelection.Font.Size = 26\n");
}

TEST_F(ErrorsInTheCommand, AMachineWithoutMemoryIsToldSo) {
    log.at("Selection.Font.Name = 黑体", [] { throw std::bad_alloc(); });
    EXPECT_EQ(build(), BuildOutcome::finished);
    EXPECT_TRUE(logged("message [none] 内存不足，这一步没有完成。请关闭其他程序后再试。"));
}

TEST_F(ErrorsInTheCommand, BringingWordForwardIgnoresItsErrors) {
    log.failAt("Application.Activate", error::automationServerGone, u"远程服务器不存在");
    EXPECT_EQ(failingWith(4198), BuildOutcome::finished);
    EXPECT_TRUE(behindTheFailure().ends_with("Application.Activate\nSelection.Font.Size = 26\n"));
}

TEST_F(ErrorsInTheCommand, EveryFailingStatementOfAStageComesBack) {
    log.failAt("PageSetup.TopMargin", 4120, u"参数错误");
    log.failAt("PageSetup.Gutter =", 4120, u"参数错误");
    EXPECT_EQ(build(), BuildOutcome::finished);
    EXPECT_EQ(linesOf("message"), "message [none] 参数错误\nmessage [none] 参数错误\n");
    EXPECT_TRUE(logged("PageSetup.FooterDistance"));
}

TEST_F(ErrorsInTheCommand, AServerThatDoesNotStartLeavesEveryStatementWithoutAnObject) {
    log.failAt("create Word.Application", 429, u"部件不能创建对象");
    EXPECT_EQ(build(), BuildOutcome::notSaved);
    EXPECT_FALSE(logged("Application"));
    EXPECT_FALSE(logged("Selection"));
    EXPECT_TRUE(logged("message [none] 部件不能创建对象"));
}

TEST_F(ErrorsInTheCommand, APreviewThatCannotBeTurnedOnIsToldAndTheRunGoesOn) {
    log.failAt("preview on", 31024, u"无法显示");
    EXPECT_EQ(build(), BuildOutcome::finished);
    EXPECT_EQ(linesBetween("preview on", "progress 0.1"),
              "dlgTB.hide\nmessage [none] 无法显示\ndlgTB.show\ndlgTB.show\nprogress 0.05\n"
              "create Word.Application\nDocuments.Add\nActiveDocument.Activate\n"
              "ActiveDocument.SaveAs work/施工方案.doc\nApplication.Visible = true\n");
}

TEST_F(ErrorsInTheCommand, APreviewThatFailsWithNumberZeroLeavesForTheStopPath) {
    log.failAt("preview on", 0, u"");
    EXPECT_EQ(build(), BuildOutcome::stopped);
    EXPECT_EQ(wholeLog(), "pointer hourglass\npreview on\nevents\npointer normal\n");
}

TEST_F(ErrorsInTheCommand, AFailedLastSaveIsToldByTheOutcome) {
    log.failAt("ActiveDocument.SaveAs", 61, u"磁盘已满", 2);
    EXPECT_EQ(build(), BuildOutcome::notSaved);
    EXPECT_TRUE(logged("message [none] 磁盘已满"));
    EXPECT_TRUE(logged("Application.Quit"));
}

namespace {

class ErrorsInANode : public GenerationWorld {
protected:
    ErrorsInANode() {
        document(u"工程.1"_s, u"甲"_s);
        document(u"工程.2"_s, u"乙"_s);
    }
};

} // namespace

TEST_F(ErrorsInANode, AMissingDocumentCostsOneBoxAndTheWalkGoesOn) {
    log.failAt("Selection.InsertFile plans/工程/工程.1.doc", 5174, u"找不到该文件");
    EXPECT_EQ(build(), BuildOutcome::finished);
    EXPECT_EQ(linesBetween("Selection.InsertFile plans/工程/工程.1.doc", "Selection.InsertBreak"),
              "dlgTB.hide\nmessage [information] 找不到该文件\n文档：甲（工程.1）\ndlgTB.show\n"
              "progress 0.4333\n");
    EXPECT_TRUE(logged("Selection.InsertFile plans/工程/工程.2.doc"));
    EXPECT_EQ(linesOf("message"), "message [information] 找不到该文件\n文档：甲（工程.1）\n");
}

TEST_F(ErrorsInANode, NumberZeroShowsNothing) {
    log.failAt("Selection.InsertFile plans/工程/工程.1.doc", 0, u"");
    EXPECT_EQ(build(), BuildOutcome::finished);
    EXPECT_FALSE(logged("message"));
    EXPECT_EQ(linesBetween("Selection.InsertFile plans/工程/工程.1.doc", "Selection.InsertBreak"),
              "dlgTB.hide\ndlgTB.show\nprogress 0.4333\n");
}

TEST_F(ErrorsInANode, AVanishedServerIsANodesErrorInTheWalk) {
    log.failAt("Selection.InsertFile plans/工程/工程.1.doc", error::automationServerGone,
               u"远程服务器不存在");
    EXPECT_EQ(build(), BuildOutcome::finished);
    EXPECT_TRUE(logged("message [information] 远程服务器不存在"));
}

TEST_F(ErrorsInANode, TheNodeStaysHalfDone) {
    log.failAt("Styles(标题 1).Font.Name", 5941, u"集合所要求的成员不存在");
    build();
    EXPECT_EQ(linesBetween("Styles(标题 1).Font.Name", "Selection.InsertBreak"),
              "dlgTB.hide\nmessage [information] 集合所要求的成员不存在\n文档：甲（工程.1）\n"
              "dlgTB.show\nprogress 0.4333\n");
    EXPECT_FALSE(logged("Selection.InsertFile plans/工程/工程.1.doc"));
}

TEST_F(ErrorsInANode, ALevelBeyondThirtyEndsTheWalkByTheCommandsRoutine) {
    QString key = u"工程"_s;
    for (int level = 1; level <= 31; ++level) {
        key += u".3"_s;
        document(key, u"深"_s);
    }
    EXPECT_EQ(build(), BuildOutcome::finished);
    EXPECT_EQ(linesOf("message"), "message [none] 下标越界\n");
    EXPECT_TRUE(logged("progress 0.8"));
}
