#include "platform/word/docfile/CompoundChecks.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <set>

namespace qvnd::test {

namespace {

constexpr std::uint32_t endOfChain = 0xFFFFFFFE;
constexpr std::uint32_t freeMark = 0xFFFFFFFF;
constexpr std::uint32_t fatMark = 0xFFFFFFFD;
constexpr std::uint32_t difatMark = 0xFFFFFFFC;
constexpr std::uint32_t none = 0xFFFFFFFF;

class Checker {
public:
    explicit Checker(word::ByteView file) : file_(file) {}

    std::vector<std::string> run() {
        if (file_.size() < 512 || file_.size() % 512 != 0) {
            return {"not a whole number of sectors"};
        }
        want(u32(0) == 0xE011CFD0 && u32(4) == 0xE11AB1A1, "signature");
        want(u16(26) == 3 && u16(28) == 0xFFFE && u16(30) == 9 && u16(32) == 6, "version or sizes");
        want(u32(56) == 4096 && u32(40) == 0, "cutoff or directory count");
        readFat();
        directory_ = chain(u32(48), "directory");
        miniFat_ = numbers(chain(u32(60), "mini FAT"));
        want(chainLength(u32(60)) == u32(64), "number of mini FAT sectors");
        checkDirectory();
        checkUse();
        return faults_;
    }

private:
    void want(bool right, const std::string& what) {
        if (!right) {
            faults_.push_back(what);
        }
    }
    std::uint16_t u16(std::size_t at) const {
        return static_cast<std::uint16_t>(file_[at] | (file_[at + 1] << 8));
    }
    std::uint32_t u32(std::size_t at) const { return u16(at) | (std::uint32_t{u16(at + 2)} << 16); }
    std::size_t sectors() const { return file_.size() / 512 - 1; }

    void readFat() {
        std::vector<std::uint32_t> places;
        for (std::size_t i = 0; i < 109; ++i) {
            places.push_back(u32(76 + 4 * i));
        }
        std::uint32_t next = u32(68);
        std::size_t count = 0;
        for (; next < sectors() && count <= sectors(); ++count) {
            use(next, difatMark);
            for (std::size_t i = 0; i < 127; ++i) {
                places.push_back(u32((next + 1) * 512 + 4 * i));
            }
            next = u32((next + 1) * 512 + 508);
        }
        want(next == endOfChain, "DIFAT does not end");
        want(count == u32(72), "number of DIFAT sectors");
        const std::size_t used = u32(44);
        want(used <= places.size(), "number of FAT sectors");
        for (std::size_t i = 0; i < places.size(); ++i) {
            if (i >= used) {
                want(places[i] == none, "FAT sector beyond the count");
            } else if (places[i] < sectors()) {
                use(places[i], fatMark);
                for (std::size_t k = 0; k < 128; ++k) {
                    fat_.push_back(u32((places[i] + 1) * 512 + 4 * k));
                }
            } else {
                want(false, "FAT sector outside of the file");
            }
        }
    }

    void use(std::uint32_t sector, std::uint32_t mark) {
        want(marks_.emplace(sector, mark).second, "sector used twice: " + std::to_string(sector));
    }

    word::Bytes chain(std::uint32_t first, const std::string& what) {
        word::Bytes bytes;
        std::uint32_t s = first;
        for (std::size_t steps = 0; s != endOfChain && steps <= sectors(); ++steps) {
            if (s >= sectors() || s >= fat_.size()) {
                want(false, what + " leaves the file");
                return bytes;
            }
            use(s, 0);
            const auto part = file_.subspan((std::size_t{s} + 1) * 512, 512);
            bytes.insert(bytes.end(), part.begin(), part.end());
            s = fat_[s];
        }
        want(s == endOfChain, what + " does not end");
        return bytes;
    }

    std::size_t chainLength(std::uint32_t first) const {
        std::size_t length = 0;
        for (std::uint32_t s = first; s < fat_.size() && length <= fat_.size(); s = fat_[s]) {
            ++length;
        }
        return length;
    }

    static std::vector<std::uint32_t> numbers(const word::Bytes& bytes) {
        word::LittleEndianReader reader(bytes, "numbers");
        std::vector<std::uint32_t> result(bytes.size() / 4);
        for (auto& number : result) {
            number = reader.u32();
        }
        return result;
    }

    struct Entry {
        std::u16string name;
        unsigned kind = 0;
        bool red = false;
        std::uint32_t left = 0, right = 0, child = 0, first = 0;
        std::uint64_t size = 0;
    };

    Entry entry(std::uint32_t number) const {
        word::LittleEndianReader reader(directory_, "directory");
        reader.seek(std::size_t{number} * 128);
        Entry e;
        e.name = reader.text(32);
        e.name.resize(std::min<std::size_t>(31, reader.u16() / 2U - 1));
        e.kind = reader.u8();
        e.red = reader.u8() == 0;
        e.left = reader.u32();
        e.right = reader.u32();
        e.child = reader.u32();
        reader.skip(36);
        e.first = reader.u32();
        e.size = reader.u64();
        return e;
    }

    void checkDirectory() {
        if (directory_.size() < 128) {
            want(false, "no directory");
            return;
        }
        const Entry root = entry(0);
        want(root.kind == 5 && root.name == u"Root Entry" && !root.red, "root entry");
        want(root.left == none && root.right == none, "root has siblings");
        miniStream_ = root.size == 0 ? word::Bytes{} : chain(root.first, "mini stream");
        want(miniStream_.size() >= root.size, "mini stream too short");
        want(root.size / 64 <= miniFat_.size(), "mini FAT too short");
        checkStorage(root);
        for (std::uint32_t i = 1; i < directory_.size() / 128; ++i) {
            want(entries_.count(i) == 1 || entry(i).kind == 0, "entry that is in no tree");
        }
        for (std::size_t i = 0; i < miniFat_.size(); ++i) {
            want(usedMini_.count(static_cast<std::uint32_t>(i)) == 1 || miniFat_[i] == freeMark,
                 "small sector that nobody uses");
        }
    }

    void checkStorage(const Entry& storage) {
        std::vector<std::uint32_t> inOrder;
        checkTree(storage.child, true, inOrder);
        for (std::size_t i = 1; i < inOrder.size(); ++i) {
            const std::u16string a = entry(inOrder[i - 1]).name;
            const std::u16string b = entry(inOrder[i]).name;
            want(a.size() < b.size() || (a.size() == b.size() && upper(a) < upper(b)),
                 "names out of order");
        }
        for (const std::uint32_t number : inOrder) {
            const Entry e = entry(number);
            if (e.kind == 1) {
                checkStorage(e);
            } else {
                want(e.kind == 2, "kind of an entry");
                checkStream(e);
            }
        }
    }

    static std::u16string upper(std::u16string name) {
        for (char16_t& c : name) {
            c = c >= u'a' && c <= u'z' ? static_cast<char16_t>(c - 32) : c;
        }
        return name;
    }

    // Answers the number of black nodes on every way down.
    int checkTree(std::uint32_t number, bool mayBeRed, std::vector<std::uint32_t>& inOrder) {
        if (number == none) {
            return 1;
        }
        if (number >= directory_.size() / 128 || !entries_.insert(number).second) {
            want(false, "tree leaves the directory or meets itself");
            return 1;
        }
        const Entry e = entry(number);
        want(mayBeRed || !e.red, "red below red");
        const int left = checkTree(e.left, !e.red, inOrder);
        inOrder.push_back(number);
        const int right = checkTree(e.right, !e.red, inOrder);
        want(left == right, "black heights differ");
        return left + (e.red ? 0 : 1);
    }

    void checkStream(const Entry& e) {
        if (e.size == 0) {
            want(e.first == endOfChain, "empty stream with sectors");
        } else if (e.size >= 4096) {
            want(chain(e.first, "stream").size() == (e.size + 511) / 512 * 512, "stream length");
        } else {
            std::size_t length = 0;
            for (std::uint32_t s = e.first; s < miniFat_.size() && length < 65; s = miniFat_[s]) {
                want(usedMini_.insert(s).second, "small sector used twice");
                ++length;
            }
            want(length == (e.size + 63) / 64, "small stream length");
        }
    }

    void checkUse() {
        for (std::size_t s = 0; s < fat_.size(); ++s) {
            const auto used = marks_.find(static_cast<std::uint32_t>(s));
            if (used == marks_.end()) {
                want(fat_[s] == freeMark, "sector lost: " + std::to_string(s));
            } else if (used->second != 0) {
                want(fat_[s] == used->second, "sector with a wrong mark: " + std::to_string(s));
            }
        }
    }

    word::ByteView file_;
    std::vector<std::uint32_t> fat_;
    std::map<std::uint32_t, std::uint32_t> marks_;
    word::Bytes directory_;
    std::vector<std::uint32_t> miniFat_;
    word::Bytes miniStream_;
    std::set<std::uint32_t> entries_;
    std::set<std::uint32_t> usedMini_;
    std::vector<std::string> faults_;
};

} // namespace

std::vector<std::string> compoundFaults(word::ByteView file) { return Checker(file).run(); }

} // namespace qvnd::test
