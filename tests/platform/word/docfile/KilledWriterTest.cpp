#include "platform/word/docfile/CompoundChecks.h"
#include "platform/word/docfile/container/CompoundFile.h"
#include "platform/word/docfile/reader/DocumentReader.h"
#include "platform/word/docfile/writer/DocumentWriter.h"
#include "support/ContentBuilder.h"

#include <csignal>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace qvnd::word {
namespace {

namespace fs = std::filesystem;
using test::bold;
using test::ContentBuilder;
using test::plain;

// The real file system, but at a certain write the process is killed, half of it done.
class DeadlyFolder final : public OutputFolder {
public:
    explicit DeadlyFolder(int fatalWrite) : left_(fatalWrite) {}

    std::unique_ptr<OutputFile> createBeside(const fs::path& target, fs::path* path) override {
        return std::make_unique<File>(*this, real_->createBeside(target, path));
    }
    std::unique_ptr<OutputFile> openForUpdate(const fs::path& path) override {
        return std::make_unique<File>(*this, real_->openForUpdate(path));
    }
    void replace(const fs::path& from, const fs::path& to) override {
        step();
        real_->replace(from, to);
        step();
    }
    void remove(const fs::path& path) noexcept override { real_->remove(path); }
    std::optional<FileStamp> stamp(const fs::path& path) override { return real_->stamp(path); }

private:
    class File final : public OutputFile {
    public:
        File(DeadlyFolder& folder, std::unique_ptr<OutputFile> real)
            : folder_(folder), real_(std::move(real)) {}
        std::size_t writeSome(std::uint64_t offset, ByteView bytes) override {
            if (folder_.left_ == 0 && bytes.size() > 512) {
                real_->writeAt(offset, bytes.first(bytes.size() / 1024 * 512));
            }
            folder_.step();
            return real_->writeSome(offset, bytes);
        }
        std::uint64_t size() override { return real_->size(); }
        void truncate(std::uint64_t size) override { real_->truncate(size); }
        void sync() override {} // of no matter for a killed process
        void close() override { real_->close(); }

    private:
        DeadlyFolder& folder_;
        std::unique_ptr<OutputFile> real_;
    };

    void step() {
        if (left_-- == 0) {
            raise(SIGKILL);
        }
    }

    int left_;
    std::shared_ptr<OutputFolder> real_ = realOutputFolder();
};

class KilledWriterTest : public testing::Test {
public:
    KilledWriterTest() {
        fs::remove_all(home);
        fs::create_directories(home);
    }
    ~KilledWriterTest() override {
        std::error_code ignored;
        fs::remove_all(home, ignored);
    }

protected:
    static std::u16string line(int state) {
        const std::string number = std::to_string(state);
        return u"第" + std::u16string(number.begin(), number.end()) + u"个 " +
               std::u16string(static_cast<std::size_t>(state) * 397 % 3000, u'文') + u"\r";
    }
    static std::u16string textOf(int state) {
        std::u16string text;
        for (int i = 1; i <= state; ++i) {
            text += line(i);
        }
        return text + u"\r";
    }

    // Saves state after state, and says so of each one that is done.
    void saveOnAndOn(std::shared_ptr<OutputFolder> folder, int done, int states) const {
        ContentBuilder builder;
        DocumentWriter writer(std::move(folder));
        writer.saveAs(path, builder.content);
        for (int state = 1; state <= states; ++state) {
            builder.add({plain(line(state).substr(0, 2)), bold(line(state).substr(2))});
            if (state % 9 == 0) {
                writer.saveAs(path, builder.content);
            } else {
                writer.save(builder.content);
            }
            const auto number = static_cast<unsigned char>(state);
            if (::write(done, &number, 1) != 1) {
                _exit(1);
            }
        }
    }

    // Starts a child that saves; answers its number and the end of the pipe that it reports to.
    std::pair<pid_t, int> start(const std::shared_ptr<OutputFolder>& folder, int states) const {
        int ends[2];
        if (pipe(ends) != 0) {
            throw std::runtime_error("no pipe");
        }
        const pid_t child = fork();
        if (child == 0) {
            ::close(ends[0]);
            saveOnAndOn(folder, ends[1], states);
            _exit(0);
        }
        ::close(ends[1]);
        return {child, ends[0]};
    }

    static int lastReported(int end) {
        unsigned char state = 0;
        int last = 0;
        while (::read(end, &state, 1) == 1) {
            last = state;
        }
        ::close(end);
        return last;
    }

    // The file is the last state that was reported, or the next one.
    void expectStateFrom(int reported) const {
        std::ifstream stream(path, std::ios::binary);
        const Bytes bytes{std::istreambuf_iterator<char>(stream), {}};
        if (bytes.empty() && reported == 0) {
            return; // killed before there was any file
        }
        EXPECT_THAT(test::compoundFaults(bytes), testing::IsEmpty());
        const DocumentContent document = readDocument(bytes);
        EXPECT_THAT(document.unread.remarks, testing::IsEmpty());
        if (joined(document.main)->text != textOf(reported)) {
            EXPECT_EQ(joined(document.main)->text, textOf(reported + 1));
        }
    }

    const fs::path home = fs::temp_directory_path() / ("qvnd-killed-" + std::to_string(getpid()));
    const fs::path path = home / "方案.doc";
};

TEST_F(KilledWriterTest, AtEveryWriteTheFileIsTheOldOrTheNewState) {
    constexpr int states = 12;
    for (int fatal = 0;; ++fatal) {
        fs::remove(path);
        const auto [child, end] = start(std::make_shared<DeadlyFolder>(fatal), states);
        const int reported = lastReported(end);
        int status = 0;
        waitpid(child, &status, 0);
        expectStateFrom(reported);
        ASSERT_TRUE(WIFEXITED(status) || WTERMSIG(status) == SIGKILL);
        if (WIFEXITED(status)) {
            EXPECT_EQ(WEXITSTATUS(status), 0);
            EXPECT_EQ(reported, states);
            EXPECT_GT(fatal, 5 * states);
            break;
        }
    }
}

TEST_F(KilledWriterTest, AtAnyMomentTheFileIsTheOldOrTheNewState) {
    int killed = 0;
    for (unsigned round = 0; round < 40; ++round) {
        const auto [child, end] = start(realOutputFolder(), 200);
        usleep(2000 + round * 1777 % 60000);
        kill(child, SIGKILL);
        int status = 0;
        waitpid(child, &status, 0);
        killed += WIFSIGNALED(status) ? 1 : 0;
        expectStateFrom(lastReported(end));
        for (const auto& entry : fs::directory_iterator(home)) {
            fs::remove(entry);
        }
    }
    EXPECT_GT(killed, 20); // the others were through before
}

} // namespace
} // namespace qvnd::word
