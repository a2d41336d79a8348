#include "platform/word/docfile/reader/DocumentReader.h"

#include "platform/word/docfile/StoryChecks.h"
#include "platform/word/docfile/container/FormatError.h"
#include "platform/word/docfile/text/DocumentText.h"
#include "support/Corpus.h"

#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>

namespace qvnd::word {
namespace {

using Kind = FormatError::Kind;

// The class that the corpus' own list gives each document.
std::map<std::string, std::string> classes(const std::filesystem::path& folder) {
    std::ifstream list(folder / "manifest.json");
    std::map<std::string, std::string> result;
    std::string file;
    const auto value = [](const std::string& line) {
        const std::size_t end = line.rfind('"');
        const std::size_t start = line.rfind('"', end - 1) + 1;
        return line.substr(start, end - start);
    };
    for (std::string line; std::getline(list, line);) {
        if (line.find("\"file\": ") != std::string::npos) {
            file = value(line);
        } else if (line.find("\"class\": ") != std::string::npos) {
            result[file] = value(line);
        }
    }
    return result;
}

class CorpusReader : public testing::Test {
protected:
    void SetUp() override {
        const auto folder = test::corpusFolder();
        if (!folder) {
            GTEST_SKIP() << "no documents of other programs here (QVND_CORPUS names their folder)";
        }
        classes_ = classes(*folder);
        folder_ = *folder;
    }

    std::vector<std::filesystem::path> ofClass(const std::string& wanted) const {
        std::vector<std::filesystem::path> files;
        for (const auto& [file, name] : classes_) {
            if (name == wanted) {
                files.push_back(folder_ / file);
            }
        }
        return files;
    }

    void everyOneIsRefusedAs(Kind kind, const std::string& name) const {
        ASSERT_THAT(ofClass(name), testing::Not(testing::IsEmpty()));
        for (const auto& path : ofClass(name)) {
            try {
                readDocument(path);
                ADD_FAILURE() << path.filename() << " was read";
            } catch (const FormatError& error) {
                EXPECT_EQ(error.kind(), kind) << path.filename() << ": " << error.what();
            }
        }
    }

    std::filesystem::path folder_;
    std::map<std::string, std::string> classes_;
};

TEST(CorpusDocuments, EveryReadableDocumentIsReadAndKeepsItsPromises) {
    for (const auto& path : test::readableDocuments()) {
        try {
            const DocumentContent document = readDocument(path);
            EXPECT_THAT(test::documentFaults(document), testing::IsEmpty()) << path.filename();
        } catch (const FormatError& error) {
            ADD_FAILURE() << path.filename() << ": " << error.what();
        }
    }
}

TEST_F(CorpusReader, DocumentsOlderThanWord97AreRefusedAsSuch) {
    everyOneIsRefusedAs(Kind::olderThanWord97, "pre-Word-97");
}

TEST_F(CorpusReader, EncryptedDocumentsAreRefusedAsSuch) {
    everyOneIsRefusedAs(Kind::encrypted, "encrypted");
}

TEST_F(CorpusReader, RtfIsNoCompoundFile) { everyOneIsRefusedAs(Kind::notCompoundFile, "rtf"); }

} // namespace
} // namespace qvnd::word
