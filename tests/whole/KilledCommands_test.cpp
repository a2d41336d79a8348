#include "platform/jet/DBEngine.h"
#include "support/Files.h"
#include "support/Text.h"
#include "support/TracedProcess.h"
#include "tools/Run.h"

#ifdef __linux__

#include <gtest/gtest.h>

#include <QDirIterator>
#include <QMap>
#include <QSet>

#include <filesystem>
#include <random>
#include <sstream>

using namespace qvnd;
using test::TracedProcess;

namespace {

const QString plansFolder = QStringLiteral("Sys/用户模板");
const QString templatesFolder = QStringLiteral("Sys/标书模板");

tools::ExitStatus qvndctl(const QString& home, const QStringList& words) {
    std::ostringstream out;
    std::ostringstream err;
    return tools::run(QStringList{"--home", home, "--yes"} + words, out, err);
}

// A document's content tells its name, and is long enough to be written in pieces.
QByteArray contentOf(const QString& name) { return (name + "\n").toUtf8().repeated(30000); }

// One outline as it is on disk: its rows in order, and the file of each document by its key.
struct Outline {
    QStringList rows;                 // key|name|kind
    QMap<QString, QString> documents; // names by keys
};

using Library = QMap<QString, Outline>;

// What a database lists, read by a run of its own. Errors of the store pass through: after a kill
// every database has to open.
Library libraryIn(const QString& file) {
    jet::DBEngine engine;
    const auto db = engine.Workspaces(0).OpenDatabase(file);
    Library library;
    for (const auto list = db->OpenRecordset("Select * from 遍历表"); !list->Eof();
         list->MoveNext()) {
        const QString name = list->Get(u"名称").TextOrEmpty();
        Outline outline;
        const auto rs = db->OpenRecordset("Select * from [" + name + "] order by ID asc");
        for (; !rs->Eof(); rs->MoveNext()) {
            const QString key = rs->Get(u"Key").TextOrEmpty();
            const QString text = rs->Get(u"名称").TextOrEmpty();
            const QString kind = rs->Get(u"是否文档").TextOrEmpty();
            outline.rows << key + '|' + text + '|' + kind;
            if (kind == "是") {
                outline.documents[key] = text;
            }
        }
        library[name] = outline;
    }
    return library;
}

struct Libraries {
    Library plans;
    Library templates;
};

Libraries librariesIn(const QString& home) {
    return {libraryIn(home + "/Sys/用户模板/Db_UsTemplate.mdb"),
            libraryIn(home + "/Sys/Database/Db_Template.mdb")};
}

// A program folder with the plans 甲 and 乙 and the template 模, of which every run gets a copy.
class Original {
public:
    Original() {
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

    // With the times of the files: one that has another counts as changed by another program.
    void copyTo(const QString& target) const {
        namespace fs = std::filesystem;
        const fs::path from = home().toStdString();
        const fs::path to = target.toStdString();
        fs::copy(from, to, fs::copy_options::recursive);
        for (const auto& entry : fs::recursive_directory_iterator(from)) {
            fs::last_write_time(to / entry.path().lexically_relative(from),
                                fs::last_write_time(entry.path()));
        }
    }

    test::TemporaryFolder folder{test::inMemory()};

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

struct KilledCommand {
    const char* label;
    QStringList words;
};

void PrintTo(const KilledCommand& command, std::ostream* out) { *out << command.label; }

std::vector<KilledCommand> commands() {
    return {
        {"PlanCreate", {"plan", "create", "丙"}},
        {"PlanOpen", {"plan", "open", "甲"}},
        {"PlanDelete", {"plan", "delete", "甲"}},
        {"FolderBeside", {"outline", "add-folder", "甲", "甲.1", "新", "--beside"}},
        {"FolderBelow", {"outline", "add-folder", "甲", "甲.1", "新", "--below"}},
        {"DocumentBeside", {"outline", "add-document", "甲", "甲.1", "新.doc", "--beside"}},
        {"DocumentBelow", {"outline", "add-document", "甲", "甲.1", "新.doc", "--below"}},
        {"DeleteNode", {"outline", "delete", "甲", "甲.1"}},
        {"DeleteRoot", {"outline", "delete", "甲", "甲"}},
        {"Rename", {"outline", "rename", "甲", "甲.1", "改"}},
        {"MoveFolderDown", {"outline", "move", "甲", "甲.1", "甲.2"}},
        {"MoveDocumentUp", {"outline", "move", "甲", "甲.4", "甲.1.3"}},
        {"CopyFolder", {"outline", "copy", "甲", "甲.2", "模.1"}},
        {"CopyTemplate", {"outline", "copy", "甲", "甲.2", "模"}},
        {"CopyOver", {"outline", "copy", "甲", "甲", "模.5"}},
        {"TemplateStore", {"template", "store", "甲"}},
        {"TemplateDeleteNode", {"template", "delete", "模.1"}},
        {"TemplateDelete", {"template", "delete", "模"}},
    };
}

constexpr int pointsOfOne = 12;

class KilledCommands : public testing::TestWithParam<KilledCommand> {
protected:
    void SetUp() override { ASSERT_FALSE(HasFailure()); }

    QStringList words() const {
        QStringList given = GetParam().words;
        return given.replaceInStrings("新.doc", original.folder.path("新.doc"));
    }
    TracedProcess::Work commandIn(const QString& home) const {
        return [this, home] { qvndctl(home, words()); };
    }

    // Every outline is the earlier one or the later one.
    void expectWhole(const QString& home, const Libraries& before, const Libraries& after) {
        const Libraries now = librariesIn(home);
        expectWhole(now.plans, before.plans, after.plans);
        expectWhole(now.templates, before.templates, after.templates);
    }
    static void expectWhole(const Library& now, const Library& before, const Library& after) {
        QSet<QString> names;
        for (const Library* library : {&now, &before, &after}) {
            for (const QString& name : library->keys()) {
                names.insert(name);
            }
        }
        for (const QString& name : names) {
            const auto in = [&](const Library& library) {
                return library.contains(name) ? library[name].rows : QStringList("not listed");
            };
            EXPECT_TRUE(in(now) == in(before) || in(now) == in(after))
                << "outline " << name.toStdString()
                << " is neither the old nor the new one: " << in(now).join(", ").toStdString();
        }
    }
    // At once, before a run has put anything right.
    static void expectDatabasesOpen(const QString& home) {
        const QString path = home + "/Sys";
        QDirIterator files(path, {"*.mdb"}, QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            jet::DBEngine engine;
            const QString file = files.next();
            EXPECT_NO_THROW(engine.Workspaces(0).OpenDatabase(file)) << file.toStdString();
        }
    }
    // Every document of every outline has its file, and that whole.
    static void expectDocuments(const QString& home) {
        const Libraries now = librariesIn(home);
        for (auto at = now.plans.begin(); at != now.plans.end(); ++at) {
            expectDocuments(at.value(), home + "/" + plansFolder + "/" + at.key());
        }
        for (auto at = now.templates.begin(); at != now.templates.end(); ++at) {
            expectDocuments(at.value(), home + "/" + templatesFolder + "/" + at.key());
        }
    }
    static void expectDocuments(const Outline& outline, const QString& folder) {
        for (auto at = outline.documents.begin(); at != outline.documents.end(); ++at) {
            QFile file(folder + "/" + at.key() + ".doc");
            ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << file.fileName().toStdString();
            EXPECT_TRUE(file.readAll() == contentOf(at.value()))
                << file.fileName().toStdString() << " is not whole";
        }
    }

    Original original;
};

TEST_P(KilledCommands, LeaveEveryOutlineAndDocumentWholeAtWhateverPoint) {
    const Libraries before = librariesIn(original.home());
    const QString undisturbed = original.folder.path("undisturbed");
    original.copyTo(undisturbed);
    const int changes = TracedProcess::run(commandIn(undisturbed), 0);
    if (changes < 0) {
        GTEST_SKIP() << "processes cannot be traced here";
    }
    const Libraries after = librariesIn(undisturbed);
    std::mt19937 random(20260210); // repeatable
    for (int i = 0; i < pointsOfOne; ++i) {
        // One point in each equal stretch of the run.
        std::uniform_int_distribution<int> stretch(i * changes / pointsOfOne + 1,
                                                   (i + 1) * changes / pointsOfOne);
        const int point = stretch(random);
        SCOPED_TRACE("killed before change " + std::to_string(point) + " of " +
                     std::to_string(changes));
        const QString home = original.folder.path("killed");
        original.copyTo(home);
        EXPECT_EQ(TracedProcess::run(commandIn(home), point), point - 1);
        expectDatabasesOpen(home);
        EXPECT_EQ(qvndctl(home, {"plan", "list"}), tools::ExitStatus::done);
        expectWhole(home, before, after);
        expectDocuments(home);
        EXPECT_EQ(qvndctl(home, {"outline", "add-folder", "乙", "乙.1", "后来", "--beside"}),
                  tools::ExitStatus::done);
        qvndctl(home, words());
        expectDocuments(home);
        std::filesystem::remove_all(home.toStdString());
    }
}

INSTANTIATE_TEST_SUITE_P(Each, KilledCommands, testing::ValuesIn(commands()),
                         [](const auto& tested) { return std::string(tested.param.label); });

} // namespace

#endif
