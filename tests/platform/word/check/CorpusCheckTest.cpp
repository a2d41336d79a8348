#include "platform/word/docfile/check/DocumentCheck.h"

#include "platform/error/Utf8.h"
#include "support/Corpus.h"
#include "support/SourceFolder.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <map>
#include <random>
#include <set>
#include <sstream>

namespace qvnd::word {
namespace {

Bytes contents(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    const std::string text(std::istreambuf_iterator<char>(in), {});
    return {text.begin(), text.end()};
}

// Files with the rules that they themselves break.
std::map<std::string, std::set<std::string>> knownFaults() {
    std::map<std::string, std::set<std::string>> faults;
    std::ifstream in(test::sourceFolder() / "tests/platform/word/check/known_faults.txt");
    std::string line;
    while (std::getline(in, line)) {
        std::istringstream fields(line);
        std::string file;
        std::string rule;
        if (line.rfind('#', 0) != 0 && std::getline(fields, file, '\t') &&
            std::getline(fields, rule, '\t')) {
            faults[file].insert(rule);
        }
    }
    return faults;
}

class CorpusCheck : public ::testing::Test {
protected:
    void SetUp() override {
        if (!test::corpusFolder()) {
            GTEST_SKIP() << "no documents of other programs here (QVND_CORPUS names their folder)";
        }
    }
};

TEST_F(CorpusCheck, ReadableDocumentsPassButForTheirOwnKnownFaults) {
    const auto faults = knownFaults();
    for (const auto& path : test::readableCorpusFiles()) {
        const std::string name = path.filename().string();
        const auto known = faults.find(name);
        std::set<std::string> missing =
            known == faults.end() ? std::set<std::string>() : known->second;
        const std::set<std::string> expected = missing;
        for (const Finding& finding : checkDocument(contents(path))) {
            missing.erase(finding.rule);
            EXPECT_EQ(expected.count(finding.rule), 1U)
                << name << ": " << finding.rule << ": " << toUtf8(finding.text);
        }
        EXPECT_TRUE(missing.empty()) << name << " no longer breaks " << *missing.begin();
    }
}

TEST_F(CorpusCheck, DamagedFilesAreCheckedWithoutAFault) {
    for (const auto& path : test::corpusFiles()) {
        checkDocument(contents(path));
    }
}

// Bytes of real documents changed at places of chance, always the same ones.
TEST_F(CorpusCheck, MutatedDocumentsAreCheckedWithoutAFault) {
    std::mt19937 chance(20240229);
    for (const auto& path : test::readableCorpusFiles()) {
        Bytes file = contents(path);
        if (file.size() > 60000) {
            continue;
        }
        for (int round = 0; round < 6; ++round) {
            for (int change = 0; change < 40; ++change) {
                file[chance() % file.size()] = static_cast<std::uint8_t>(chance());
            }
            checkDocument(file);
        }
        file.resize(chance() % file.size());
        checkDocument(file);
    }
}

} // namespace
} // namespace qvnd::word
