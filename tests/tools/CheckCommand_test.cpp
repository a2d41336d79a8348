#include "support/Qvndctl.h"

using namespace Qt::StringLiterals;
using namespace qvnd;
using namespace qvnd::tools;

namespace {

// A plan 桥 with an empty folder at its head and a document.
class CheckTool : public Qvndctl {
protected:
    CheckTool() {
        writeDocument(u"源/说明.doc"_s);
        expectDone({u"plan"_s, u"create"_s, u"桥"_s});
        expectDone({u"outline"_s, u"add-folder"_s, u"桥"_s, u"桥"_s, u"概况"_s, u"--below"_s});
        chapter = out.trimmed();
        expectDone({u"outline"_s, u"add-document"_s, u"桥"_s, u"桥"_s,
                    folder.path(u"源/说明.doc"_s), u"--below"_s});
        document = out.trimmed();
    }
    // "key kind" of each finding.
    QStringList kinds() const {
        QStringList lines;
        for (const auto& finding : json().toArray()) {
            lines << finding[u"key"_s].toString() + u' ' + finding[u"kind"_s].toString();
        }
        return lines;
    }
    QString fileOf(const QString& key) const {
        QString found;
        for (const QString& home :
             {u"home/Sys/用户模板/桥/"_s, u"home/工程文档管理/用户模板/桥/"_s}) {
            if (folder.exists(home + key + u".doc"_s)) {
                found = home + key + u".doc"_s;
            }
        }
        return found;
    }

    QString chapter;
    QString document;
};

} // namespace

TEST_F(CheckTool, WhatIsOnlyWorthKnowingIsNoRefusal) {
    expectDone({u"--json"_s, u"check"_s, u"桥"_s});
    EXPECT_EQ(kinds(), QStringList{chapter + u" emptyFolder"_s});
    expectDone({u"check"_s, u"桥"_s});
    EXPECT_TRUE(out.contains(chapter + u" 概况："_s)) << out.toStdString();
}

TEST_F(CheckTool, TheFirstRunOfAWindowHasItsOwnForm) {
    expectDone({u"--json"_s, u"check"_s, u"桥"_s, u"--first-run"_s});
    EXPECT_EQ(kinds(), QStringList({chapter + u" emptyFolder"_s, chapter + u" runsOn"_s}));
}

TEST_F(CheckTool, ADocumentThatWillNotComeInIsARefusal) {
    ASSERT_FALSE(fileOf(document).isEmpty());
    folder.write(fileOf(document), "no document");
    EXPECT_EQ(qvndctl({u"--json"_s, u"check"_s, u"桥"_s}), ExitStatus::refused);
    EXPECT_TRUE(kinds().contains(document + u" unreadable"_s)) << out.toStdString();
    QFile::remove(folder.path(fileOf(document)));
    EXPECT_EQ(qvndctl({u"--json"_s, u"check"_s, u"桥"_s}), ExitStatus::refused);
    EXPECT_TRUE(kinds().contains(document + u" missing"_s)) << out.toStdString();
}

TEST_F(CheckTool, ACoverThatBearsAnotherPlansNamesIsToldWithTheCommandThatMendsIt) {
    expectDone({u"plan"_s, u"create"_s, u"路"_s});
    expectDone({u"format"_s, u"load"_s, u"路"_s});
    for (const QStringList& options : {QStringList{}, QStringList{u"--first-run"_s}}) {
        expectDone(QStringList{u"--json"_s, u"check"_s, u"桥"_s} + options);
        ASSERT_FALSE(json().toArray().isEmpty());
        const QJsonObject last = json().toArray().last().toObject();
        EXPECT_EQ(last[u"kind"_s].toString(), u"foreignCover"_s) << out.toStdString();
        EXPECT_EQ(last[u"what"_s].toString(), u"封面的工程名称“路”属于另一个方案“路”。"_s);
        EXPECT_TRUE(last[u"advice"_s].toString().contains(u"qvndctl format load"_s));
    }
    expectDone({u"format"_s, u"load"_s, u"桥"_s});
    expectDone({u"--json"_s, u"check"_s, u"桥"_s});
    EXPECT_FALSE(kinds().contains(u"桥 foreignCover"_s)) << out.toStdString();
}

TEST_F(CheckTool, APlanThatIsNotThereIsRefused) {
    EXPECT_EQ(qvndctl({u"check"_s, u"没有"_s}), ExitStatus::refused);
    EXPECT_TRUE(err.contains(u"没有"_s)) << err.toStdString();
}
