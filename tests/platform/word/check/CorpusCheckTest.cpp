#include "platform/word/docfile/check/DocumentCheck.h"

#include "platform/error/Utf8.h"
#include "platform/word/docfile/container/FormatError.h"
#include "platform/word/docfile/reader/DocumentReader.h"
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

TEST(CorpusCheck, ReadableDocumentsPassButForTheirOwnKnownFaults) {
    const auto faults = knownFaults();
    std::size_t checked = 0;
    for (const auto& path : test::readableDocuments()) {
        ++checked;
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
    EXPECT_GT(checked, test::corpusFolder() ? faults.size() : 0) << "those that have no fault, too";
}

// Findings name their rule and say in words what is wrong.
std::vector<Finding> findings(const Bytes& file) {
    std::vector<Finding> found = checkDocument(file);
    for (const Finding& finding : found) {
        EXPECT_FALSE(finding.rule.empty() || finding.text.empty());
    }
    return found;
}

bool isDamaged(const Bytes& file) {
    try {
        readDocument(file);
        return false;
    } catch (const FormatError& refusal) {
        return refusal.kind() == FormatError::Kind::damaged;
    }
}

TEST(CorpusCheck, WhatCannotBeReadForItsDamageBreaksARule) {
    int refused = 0;
    for (const auto& path : test::foreignDocuments()) {
        Bytes file = contents(path);
        for (const std::size_t size : {file.size(), file.size() / 2}) {
            file.resize(size);
            const std::vector<Finding> found = findings(file);
            if (isDamaged(file)) {
                ++refused;
                EXPECT_FALSE(found.empty()) << path.filename() << " of " << size << " bytes";
            }
        }
    }
    EXPECT_GT(refused, 0);
}

// Bytes of real documents changed at places of chance, always the same ones.
TEST(CorpusCheck, MutatedDocumentsAreCheckedAndCutOnesBreakARule) {
    std::mt19937 chance(20240229);
    int checked = 0;
    int faulty = 0;
    for (const auto& path : test::readableDocuments()) {
        Bytes file = contents(path);
        if (file.size() > 60000) {
            continue;
        }
        for (int round = 0; round < 6; ++round) {
            for (int change = 0; change < 40; ++change) {
                file[chance() % file.size()] = static_cast<std::uint8_t>(chance());
            }
            ++checked;
            faulty += findings(file).empty() ? 0 : 1;
        }
        file.resize(chance() % file.size());
        EXPECT_FALSE(findings(file).empty()) << path.filename();
    }
    EXPECT_GT(faulty, checked / 2) << "of " << checked;
}

} // namespace
} // namespace qvnd::word
