#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace qvnd::word {

// One breach of the file format.
struct Finding {
    std::string rule;    // short and stable: "fkp.order", "table.cells", ...
    std::u16string text; // in Chinese, with the place
};

// Gathers findings. Of one rule the first 20 are kept, and how many more there are.
class Findings {
public:
    void add(std::string_view rule, std::u16string text);
    bool empty() const { return findings_.empty(); }
    // In the order of their rules' first appearance.
    std::vector<Finding> take();

private:
    std::vector<Finding> findings_;
    std::map<std::string, int, std::less<>> counts_;
};

// "0x1A2B", as places in a stream are given.
std::u16string hexadecimal(std::uint64_t value);

} // namespace qvnd::word
