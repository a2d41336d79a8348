#pragma once

#include "support/Files.h"
#include "support/Text.h"
#include "tools/Run.h"

#include <gtest/gtest.h>

#include <sstream>
#include <vector>

namespace qvnd::test {

inline tools::ExitStatus qvndctl(const QString& home, const QStringList& words) {
    std::ostringstream out;
    std::ostringstream err;
    return tools::run(QStringList{"--home", home, "--yes"} + words, out, err);
}

// A document's content tells its name, and is long enough to be written in pieces.
inline QByteArray contentOf(const QString& name) { return (name + "\n").toUtf8().repeated(6000); }

struct PlannersCommand {
    const char* label;
    QStringList words;
};

inline void PrintTo(const PlannersCommand& command, std::ostream* out) { *out << command.label; }

inline std::vector<PlannersCommand> commandsOfAPlanner() {
    return {
        {"PlanCreate", {"plan", "create", "丙"}},
        {"PlanOpen", {"plan", "open", "乙"}},
        {"PlanDelete", {"plan", "delete", "甲"}},
        {"FolderBeside", {"outline", "add-folder", "甲", "甲.1", "新", "--beside"}},
        {"FolderBelow", {"outline", "add-folder", "甲", "甲.1", "新", "--below"}},
        {"DocumentBeside", {"outline", "add-document", "甲", "甲.1", "新.doc", "--beside"}},
        {"DocumentBelow", {"outline", "add-document", "甲", "甲.1", "新.doc", "--below"}},
        {"DeleteNode", {"outline", "delete", "甲", "甲.1"}},
        {"DeleteRoot", {"outline", "delete", "甲", "甲"}},
        {"Rename", {"outline", "rename", "甲", "甲.1", "改"}},
        {"MoveFolderDown", {"outline", "move", "甲", "甲.1", "甲.2"}},
        {"MoveDocumentUp", {"outline", "move", "甲", "甲.4", "甲.1.1"}},
        {"CopyFolder", {"outline", "copy", "甲", "甲.2", "模.1"}},
        {"CopyTemplate", {"outline", "copy", "甲", "甲.2", "模"}},
        {"CopyOver", {"outline", "copy", "甲", "甲", "模.5"}},
        {"TemplateStore", {"template", "store", "甲"}},
        {"TemplateDeleteNode", {"template", "delete", "模.1"}},
        {"TemplateDelete", {"template", "delete", "模"}},
        {"FormatSet", {"format", "set", "页面设置表", "页边距上", "2.9"}},
    };
}

// A program folder with the plans 甲 and 乙 and the template 模, of which every run gets a copy.
class PlannedHome {
public:
    PlannedHome() {
        for (const char* plan : {"甲", "乙", "模"}) {
            make(plan);
        }
        expectDone({"template", "store", "模"});
        expectDone({"plan", "delete", "模"});
        expectDone({"outline", "add-folder", "甲", "甲.2", "甲下", "--below"});
        // What is copied from the template has other texts.
        folder.write("新.doc", contentOf("新"));
    }
    QString home() const { return folder.path("home"); }

    void copyTo(const QString& target) const { copyWithTimes(home(), target); }

    // The file that a command adds lies in the folder.
    QStringList wordsOf(const PlannersCommand& command) const {
        QStringList words = command.words;
        return words.replaceInStrings("新.doc", folder.path("新.doc"));
    }

    TemporaryFolder folder{inMemory()};

private:
    void expectDone(const QStringList& words) {
        EXPECT_EQ(qvndctl(home(), words), tools::ExitStatus::done) << words.join(' ').toStdString();
    }
    void document(const QString& plan, const QString& key, const QString& name) {
        folder.write(name + ".doc", contentOf(name));
        expectDone({"outline", "add-document", plan, key, folder.path(name + ".doc"), "--below"});
    }
    // P.1 a folder with the document P.1.1, P.2 a folder, P.4 a document, P.5 one that both have.
    void make(const QString& plan) {
        expectDone({"plan", "create", plan});
        for (const char* name : {"章一", "章二"}) {
            expectDone({"outline", "add-folder", plan, plan, plan + name, "--below"});
        }
        document(plan, plan + ".1", plan + "文一");
        document(plan, plan, plan + "文二");
        document(plan, plan, plan == "乙" ? "乙共有" : "共有");
    }
};

} // namespace qvnd::test
