#include "platform/word/docfile/container/OutputFile.h"

#include "platform/error/RunTimeError.h"
#include "platform/error/Utf8.h"
#include "platform/word/docfile/container/FileErrors.h"
#include "platform/word/docfile/container/WriteObserver.h"
#include "support/Errors.h"

#include <cerrno>
#include <chrono>
#include <fstream>
#include <gtest/gtest.h>
#include <system_error>
#include <unistd.h>

namespace qvnd::word {
namespace {

namespace fs = std::filesystem;

class OutputFileTest : public testing::Test {
public:
    OutputFileTest() { fs::create_directories(home); }
    ~OutputFileTest() override {
        std::error_code ignored;
        fs::permissions(home, fs::perms::owner_all, ignored);
        fs::remove_all(home, ignored);
    }

protected:
    void write(const fs::path& path, const std::string& text) const {
        std::ofstream(path, std::ios::binary) << text;
    }
    static std::string read(const fs::path& path) {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    std::size_t filesInHome() const {
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(home), fs::directory_iterator()));
    }
    void replaceBy(const std::string& text, const fs::path& target) const {
        fs::path temporary;
        auto file = folder->createBeside(target, &temporary);
        file->writeAt(0, ByteView(reinterpret_cast<const std::uint8_t*>(text.data()), text.size()));
        file->sync();
        file->close();
        try {
            folder->replace(temporary, target);
        } catch (const RunTimeError&) {
            folder->remove(temporary);
            throw;
        }
    }
    std::optional<long> errorOfReplacing(const fs::path& target) const {
        return test::errorNumberOf([&] { replaceBy("new", target); });
    }

    const fs::path home = fs::temp_directory_path() / ("qvnd-output-" + std::to_string(getpid()));
    std::shared_ptr<OutputFolder> folder = realOutputFolder();
};

TEST_F(OutputFileTest, WritesWhereItIsTold) {
    fs::path path;
    auto file = folder->createBeside(home / "target.doc", &path);
    const Bytes bytes{'a', 'b', 'c'};
    file->writeAt(2, bytes);
    file->writeAt(1, bytes);
    EXPECT_EQ(file->size(), 5U);
    file->truncate(4);
    file->close();
    file->close();
    EXPECT_EQ(read(path), std::string("\0abc", 4));
}

TEST_F(OutputFileTest, ATemporaryFileHasANameOfItsOwnInTheSameFolder) {
    fs::path one;
    fs::path two;
    const fs::path target = home / (std::string(240, 'x') + ".doc"); // as long as names can be
    folder->createBeside(target, &one);
    folder->createBeside(target, &two);
    EXPECT_NE(one, two);
    EXPECT_EQ(one.parent_path(), home);
    EXPECT_TRUE(fs::exists(one));
    EXPECT_TRUE(fs::exists(two));
}

TEST_F(OutputFileTest, ReplacingKeepsThePermissions) {
    const fs::path target = home / "target.doc";
    write(target, "old");
    fs::permissions(target, fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
    replaceBy("new", target);
    EXPECT_EQ(read(target), "new");
    EXPECT_EQ(fs::status(target).permissions(),
              fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
    EXPECT_EQ(filesInHome(), 1U);
}

TEST_F(OutputFileTest, NamesMayHaveAnyCharacters) {
    const fs::path target = home / fs::u8path("某项目 𠀀 «施工» 方案.doc");
    replaceBy("new", target);
    EXPECT_EQ(read(target), "new");
}

TEST_F(OutputFileTest, ALinkStaysAndItsTargetIsReplaced) {
    fs::create_directory(home / "inner");
    write(home / "inner" / "real.doc", "old");
    fs::create_symlink(home / "inner" / "real.doc", home / "link.doc");
    replaceBy("new", home / "link.doc");
    EXPECT_TRUE(fs::is_symlink(home / "link.doc"));
    EXPECT_EQ(read(home / "inner" / "real.doc"), "new");
}

// Another file system may begin at the link, and a file takes another's place only within one.
TEST_F(OutputFileTest, ATemporaryFileLiesBesideTheTargetOfALink) {
    fs::create_directory(home / "inner");
    write(home / "inner" / "real.doc", "old");
    fs::create_symlink(home / "inner" / "real.doc", home / "link.doc");
    fs::path temporary;
    folder->createBeside(home / "link.doc", &temporary);
    EXPECT_EQ(temporary.parent_path(), fs::canonical(home / "inner"));
}

TEST_F(OutputFileTest, AProtectedFileIsNotReplaced) {
    const fs::path target = home / "target.doc";
    write(target, "old");
    fs::permissions(target, fs::perms::owner_read);
    EXPECT_EQ(errorOfReplacing(target), error::permissionDenied);
    EXPECT_EQ(read(target), "old");
    EXPECT_EQ(filesInHome(), 1U);
}

TEST_F(OutputFileTest, AFolderIsNotReplaced) {
    fs::create_directory(home / "target.doc");
    EXPECT_EQ(errorOfReplacing(home / "target.doc"), error::pathAccess);
    EXPECT_EQ(filesInHome(), 1U);
}

TEST_F(OutputFileTest, AMissingFolderIsAPathNotFound) {
    EXPECT_EQ(errorOfReplacing(home / "nowhere" / "target.doc"), error::pathNotFound);
    write(home / "file", "");
    EXPECT_EQ(errorOfReplacing(home / "file" / "target.doc"), error::pathNotFound);
    EXPECT_EQ(test::errorNumberOf([&] { folder->openForUpdate(home / "none.doc"); }),
              error::pathNotFound);
}

TEST_F(OutputFileTest, AFullDeviceIsADiskFull) {
    if (!fs::exists("/dev/full")) {
        GTEST_SKIP() << "no device that is always full";
    }
    auto file = folder->openForUpdate("/dev/full");
    EXPECT_EQ(test::errorNumberOf([&] { file->writeAt(0, Bytes(10)); }), error::diskFull);
}

TEST_F(OutputFileTest, TheDescriptionNamesTheFile) {
    try {
        folder->openForUpdate(home / fs::u8path("方案.doc"));
        FAIL() << "there is no such file";
    } catch (const RunTimeError& error) {
        EXPECT_NE(error.description().find(u"方案.doc"), std::u16string::npos);
    }
}

TEST_F(OutputFileTest, WhatTheSystemSaysHasItsNumber) {
    const auto number = [](std::errc condition) {
        return test::errorNumberOf(
            [&] { throwFileError(std::make_error_code(condition), "x.doc"); });
    };
    EXPECT_EQ(number(std::errc::no_space_on_device), error::diskFull);
    EXPECT_EQ(number(std::errc::file_too_large), error::diskFull);
    EXPECT_EQ(number(std::errc::permission_denied), error::permissionDenied);
    EXPECT_EQ(number(std::errc::operation_not_permitted), error::permissionDenied);
    EXPECT_EQ(number(std::errc::read_only_file_system), error::permissionDenied);
    EXPECT_EQ(number(std::errc::no_such_file_or_directory), error::pathNotFound);
    EXPECT_EQ(number(std::errc::not_a_directory), error::pathNotFound);
    EXPECT_EQ(number(std::errc::text_file_busy), error::permissionDenied);
    EXPECT_EQ(number(std::errc::device_or_resource_busy), error::permissionDenied);
    EXPECT_EQ(number(std::errc::io_error), error::pathAccess);
    EXPECT_EQ(test::errorNumberOf([] {
                  throwFileError({EDQUOT, std::generic_category()}, "x.doc");
              }),
              error::diskFull);
}

TEST_F(OutputFileTest, ChangesBehindALinkAreToldByTheNameOfTheFileItself) {
    struct Told : WriteObserver {
        void beforeReplacing(const fs::path& file) override { replaced = file; }
        void beforeEditing(const fs::path& file) override { edited = file; }
        fs::path replaced;
        fs::path edited;
    } told;
    fs::create_directory(home / "inner");
    write(home / "inner" / "real.doc", "old");
    fs::create_symlink(home / "inner" / "real.doc", home / "link.doc");
    observeWrites(&told);
    folder->openForUpdate(home / "link.doc");
    replaceBy("new", home / "link.doc");
    observeWrites(nullptr);
    EXPECT_EQ(told.edited, fs::canonical(home / "inner" / "real.doc"));
    EXPECT_EQ(told.replaced, told.edited);
}

TEST_F(OutputFileTest, AStampTellsAnotherFileAndAnotherContents) {
    const fs::path target = home / "target.doc";
    EXPECT_FALSE(folder->stamp(target));
    write(target, "old");
    const auto before = folder->stamp(target);
    ASSERT_TRUE(before);
    EXPECT_EQ(folder->stamp(target), before);
    replaceBy("new", target);
    EXPECT_NE(folder->stamp(target), before);
    const auto after = folder->stamp(target);
    write(target, "longer");
    EXPECT_NE(folder->stamp(target), after);
    const auto written = folder->stamp(target);
    fs::last_write_time(target, fs::last_write_time(target) + std::chrono::hours(1));
    EXPECT_NE(folder->stamp(target), written) << "the time alone";
}

TEST_F(OutputFileTest, ANameThatIsTakenIsPassedOver) {
    fs::path first;
    folder->createBeside(home / "target.doc", &first);
    const std::string name = first.filename().string();
    const auto number = name.rfind('-') + 1;
    const int next = std::stoi(name.substr(number)) + 1;
    write(home / (name.substr(0, number) + std::to_string(next) + ".tmp"), "of somebody else");
    const std::size_t before = filesInHome();
    fs::path second;
    folder->createBeside(home / "target.doc", &second);
    EXPECT_EQ(second.filename().string(),
              name.substr(0, number) + std::to_string(next + 1) + ".tmp");
    EXPECT_EQ(filesInHome(), before + 1);
}

TEST_F(OutputFileTest, WhatCannotBePutInPlaceIsToldOfTheTarget) {
    write(home / "target.doc", "old");
    try {
        folder->replace(home / "nothing.tmp", home / "target.doc");
        FAIL() << "nothing was put in place of a file";
    } catch (const RunTimeError& error) {
        EXPECT_NE(error.description().find(u"target.doc"), std::u16string::npos);
    }
    EXPECT_EQ(read(home / "target.doc"), "old");
}

TEST_F(OutputFileTest, WhatIsPutInPlaceOfAFileIsToldBefore) {
    struct Told : WriteObserver {
        void beforeReplacing(const fs::path& file) override {
            replaced = file;
            std::ifstream stream(file);
            std::getline(stream, content);
        }
        void beforeEditing(const fs::path&) override {}
        fs::path replaced;
        std::string content;
    } told;
    write(home / "target.doc", "old");
    write(home / "new.tmp", "new");
    observeWrites(&told);
    folder->replace(home / "new.tmp", home / "target.doc");
    observeWrites(nullptr);
    EXPECT_EQ(told.replaced, home / "target.doc");
    EXPECT_EQ(told.content, "old");
    EXPECT_EQ(read(home / "target.doc"), "new");
}

} // namespace
} // namespace qvnd::word
