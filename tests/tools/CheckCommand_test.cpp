#include "platform/word/docfile/writer/DocumentWriter.h"
#include "platform/word/engine/NormalTemplate.h"
#include "support/Qvndctl.h"

using namespace Qt::StringLiterals;
using namespace qvnd;
using namespace qvnd::tools;

namespace {

// A plan 桥 with an empty folder at its head and a document.
class CheckTool : public Qvndctl {
protected:
    CheckTool() {
        folder.write(u"源/说明.doc"_s, {});
        word::DocumentWriter().saveAs(files::toPath(folder.path(u"源/说明.doc"_s)),
                                      word::normalTemplate());
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

TEST_F(CheckTool, APlanThatIsNotThereIsRefused) {
    EXPECT_EQ(qvndctl({u"check"_s, u"没有"_s}), ExitStatus::refused);
    EXPECT_TRUE(err.contains(u"没有"_s)) << err.toStdString();
}
