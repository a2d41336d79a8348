#include "support/Files.h"
#include "support/Text.h"
#include "tools/Run.h"

#ifdef __unix__

#include <gtest/gtest.h>

#include <functional>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

using namespace qvnd;

namespace {

// Several companions started at the same moment on one work space.
class SeveralTogether : public testing::Test {
protected:
    static constexpr int several = 20;

    QStringList result(const QStringList& words) {
        std::ostringstream out;
        std::ostringstream err;
        EXPECT_EQ(run(words, out, err), tools::ExitStatus::done) << err.str();
        return QString::fromStdString(out.str()).split('\n', Qt::SkipEmptyParts);
    }
    // The exit statuses of processes of their own, of which each is told its number.
    std::vector<int> together(const std::function<QStringList(int)>& wordsOf) {
        int gate[2];
        EXPECT_EQ(pipe(gate), 0);
        std::vector<pid_t> processes;
        for (int i = 1; i <= several; ++i) {
            const pid_t process = fork();
            if (process == 0) {
                close(gate[1]);
                char byte = 0;
                (void)!read(gate[0], &byte, 1); // until all stand ready
                std::ostringstream out;
                std::ostringstream err;
                const auto status = run(wordsOf(i), out, err);
                if (status != tools::ExitStatus::done) {
                    (void)!write(STDERR_FILENO, err.str().data(), err.str().size());
                }
                _exit(static_cast<int>(status));
            }
            processes.push_back(process);
        }
        close(gate[0]);
        close(gate[1]);
        std::vector<int> statuses;
        for (const pid_t process : processes) {
            int status = 0;
            waitpid(process, &status, 0);
            statuses.push_back(WIFEXITED(status) ? WEXITSTATUS(status) : -1);
        }
        return statuses;
    }

    test::TemporaryFolder folder;

private:
    tools::ExitStatus run(const QStringList& words, std::ostream& out, std::ostream& err) {
        return tools::run(QStringList{"--home", folder.path("home")} + words, out, err);
    }
};

const std::vector<int> allDone(20, 0);

TEST_F(SeveralTogether, AllAddTheirFolderToOneOutline) {
    result({"plan", "create", "甲"});
    EXPECT_EQ(together([](int i) {
                  return QStringList{"outline", "add-folder", "甲", "甲", "节" + QString::number(i),
                                     "--below"};
              }),
              allDone);
    const QStringList rows = result({"outline", "show", "甲"});
    EXPECT_EQ(rows.size(), several + 1);
    for (int i = 1; i <= several; ++i) {
        EXPECT_EQ(rows.filter("节" + QString::number(i)).size(), i == 1 ? 11 : i == 2 ? 2 : 1);
    }
}

TEST_F(SeveralTogether, AllMakeTheirPlanInANewWorkSpace) {
    EXPECT_EQ(together([](int i) {
                  return QStringList{"plan", "create", "方案" + QString::number(i)};
              }),
              allDone);
    QStringList plans = result({"plan", "list"});
    EXPECT_EQ(plans.size(), several);
    EXPECT_EQ(plans.removeDuplicates(), 0);
}

} // namespace

#endif
