#pragma once

#include "support/SourceFolder.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <regex>
#include <string>
#include <system_error>
#include <vector>

namespace qvnd::test {

// The folder of real documents: what QVND_CORPUS names, else `shared/corpus` beside the folder of
// the repository; nothing when there is no such folder.
inline std::optional<std::filesystem::path> corpusFolder() {
    const char* named = std::getenv("QVND_CORPUS");
    const std::filesystem::path folder = named != nullptr
                                             ? std::filesystem::path(named)
                                             : sourceFolder().parent_path() / "shared" / "corpus";
    std::error_code error;
    return std::filesystem::is_directory(folder, error) ? std::optional(folder) : std::nullopt;
}

// The documents in a folder by name.
inline std::vector<std::filesystem::path> documentsIn(const std::filesystem::path& folder) {
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.is_regular_file() && entry.path().extension() == ".doc") {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

// The documents of the sample plan, which LibreOffice has made from our own sources.
inline std::vector<std::filesystem::path> sampleDocuments() {
    return documentsIn(sourceFolder() / "share" / "sample" / "documents");
}

// Documents that other programs have made, whole and damaged ones: those of the sample plan, and
// those of the corpus where there is one.
inline std::vector<std::filesystem::path> foreignDocuments() {
    std::vector<std::filesystem::path> files = sampleDocuments();
    if (const auto folder = corpusFolder()) {
        const auto more = documentsIn(*folder);
        files.insert(files.end(), more.begin(), more.end());
    }
    return files;
}

// The documents that the corpus's list calls readable; none where there is no corpus.
inline std::vector<std::filesystem::path> readableCorpusFiles() {
    std::vector<std::filesystem::path> files;
    if (const auto folder = corpusFolder()) {
        std::ifstream in(*folder / "manifest.json");
        const std::string list(std::istreambuf_iterator<char>(in), {});
        static const std::regex entry(R"re("file": "([^"]+)",\s*"class": "ok")re");
        for (std::sregex_iterator at(list.begin(), list.end(), entry), end; at != end; ++at) {
            files.push_back(*folder / (*at)[1].str());
        }
    }
    return files;
}

// Those of other programs that can be read.
inline std::vector<std::filesystem::path> readableDocuments() {
    std::vector<std::filesystem::path> files = sampleDocuments();
    const auto more = readableCorpusFiles();
    files.insert(files.end(), more.begin(), more.end());
    return files;
}

} // namespace qvnd::test
