#include "platform/word/docfile/check/Finding.h"

#include "platform/word/docfile/document/Remarks.h"

namespace qvnd::word {

namespace {

constexpr int keptOfOneRule = 20;

} // namespace

void Findings::add(std::string_view rule, std::u16string text) {
    int& count = counts_.try_emplace(std::string(rule), 0).first->second;
    if (++count <= keptOfOneRule) {
        findings_.push_back({std::string(rule), std::move(text)});
    }
}

std::vector<Finding> Findings::take() {
    for (const auto& [rule, count] : counts_) {
        if (count > keptOfOneRule) {
            findings_.push_back({rule, u"同类问题还有 " + digits(count - keptOfOneRule) + u" 处"});
        }
    }
    counts_.clear();
    return std::move(findings_);
}

std::u16string hexadecimal(std::uint64_t value) {
    std::u16string text;
    do {
        text.insert(text.begin(), u"0123456789ABCDEF"[value % 16]);
        value /= 16;
    } while (value != 0);
    return u"0x" + text;
}

} // namespace qvnd::word
