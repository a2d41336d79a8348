#include "platform/word/docfile/check/ContainerSectors.h"
#include "platform/word/docfile/container/CompoundFile.h"
#include "platform/word/docfile/container/CompoundFormat.h"
#include "platform/word/docfile/document/Remarks.h"

#include <vector>

namespace qvnd::word {

namespace {

struct Entry {
    std::u16string name;
    std::uint16_t nameSize = 0; // with its zero, in bytes
    bool zeroTerminated = false;
    std::uint8_t kind = 0;
    std::uint8_t colour = 0;
    std::uint32_t left = 0;
    std::uint32_t right = 0;
    std::uint32_t child = 0;
    std::uint32_t first = 0;
    std::uint64_t size = 0;
};

Entry readEntry(LittleEndianReader& reader, bool shortSizes) {
    constexpr std::size_t nameUnits = 32;
    Entry entry;
    entry.name = reader.text(nameUnits);
    entry.nameSize = reader.u16();
    const std::size_t units = entry.nameSize / 2;
    entry.zeroTerminated = units >= 1 && units <= nameUnits && entry.name[units - 1] == 0;
    entry.name.resize(entry.zeroTerminated ? units - 1 : 0);
    entry.kind = reader.u8();
    entry.colour = reader.u8();
    entry.left = reader.u32();
    entry.right = reader.u32();
    entry.child = reader.u32();
    reader.skip(16 + 4 + 16); // class, state, times
    entry.first = reader.u32();
    entry.size = reader.u64();
    if (shortSizes) { // version 3: the upper half may hold anything
        entry.size &= 0xFFFFFFFF;
    }
    return entry;
}

class Directory {
public:
    Directory(ByteView bytes, bool shortSizes, Findings& findings) : findings_(findings) {
        LittleEndianReader reader(bytes, "directory");
        while (reader.remaining() >= cfb::entrySize) {
            entries_.push_back(readEntry(reader, shortSizes));
        }
        reached_.resize(entries_.size());
    }

    bool hasRoot() const { return !entries_.empty() && entries_[0].kind == cfb::kindRoot; }
    const std::vector<Entry>& entries() const { return entries_; }
    bool reached(std::size_t index) const { return reached_[index]; }

    void checkNames() {
        for (std::size_t i = 0; i < entries_.size(); ++i) {
            const Entry& entry = entries_[i];
            if (entry.kind == cfb::kindUnused) {
                continue;
            }
            const bool known = entry.kind == cfb::kindStorage || entry.kind == cfb::kindStream ||
                               (entry.kind == cfb::kindRoot && i == 0);
            if (!known) {
                tell("cfb.directory.kind", i, u"的类型不对");
            }
            if (!entry.zeroTerminated || entry.nameSize % 2 != 0 || entry.name.empty() ||
                entry.name.find_first_of(u"/\\:!") != std::u16string::npos) {
                tell("cfb.directory.name", i, u"的名称不合规定");
            }
        }
    }

    // Walks every storage's tree. Depth is bounded, since each entry is entered once.
    void checkTrees() {
        reached_[0] = true;
        std::vector<std::size_t> storages{0};
        while (!storages.empty()) {
            const std::size_t storage = storages.back();
            storages.pop_back();
            Tree tree{*this, storages, nullptr};
            if (entries_[storage].child != cfb::noEntry) {
                tree.check(entries_[storage].child);
            }
        }
        for (std::size_t i = 0; i < entries_.size(); ++i) {
            if (entries_[i].kind != cfb::kindUnused && !reached_[i]) {
                tell("cfb.directory.lost", i, u"不在目录树中");
            }
        }
    }

private:
    // The red-black tree of one storage's entries, walked in order. That every way down has as
    // many black entries is not asked for: hardly a program balances its trees, nor need it.
    struct Tree {
        Directory& directory;
        std::vector<std::size_t>& storages;
        const Entry* last;

        struct Step {
            std::size_t index;
            bool leftDone;
            bool red;
        };
        // Enters an entry once; a second time is a circle or a shared entry.
        bool enter(std::uint32_t number) {
            if (number >= directory.entries_.size()) {
                directory.findings_.add("cfb.directory.link",
                                        u"目录项 " + digits(number) + u" 不存在");
                return false;
            }
            if (directory.reached_[number]) {
                directory.tell("cfb.directory.link", number, u"被指到两次");
                return false;
            }
            directory.reached_[number] = true;
            if (directory.entries_[number].kind == cfb::kindUnused) {
                directory.tell("cfb.directory.link", number, u"未使用却在目录树中");
                return false;
            }
            return true;
        }

        void push(std::vector<Step>& path, std::uint32_t number, const Step* parent) {
            if (!enter(number)) {
                return;
            }
            const bool red = directory.entries_[number].colour == cfb::colourRed;
            if (red && parent != nullptr && parent->red) {
                directory.tell("cfb.directory.red", number, u"与上级同为红结点");
            }
            path.push_back({number, false, red});
        }

        void visit(std::size_t index) {
            const Entry& entry = directory.entries_[index];
            if (last != nullptr && compareEntryNames(last->name, entry.name) >= 0) {
                directory.tell("cfb.directory.order", index, u"的名称次序不对");
            }
            last = &entry;
            if (entry.kind == cfb::kindStorage) {
                storages.push_back(index);
            }
        }

        void check(std::uint32_t root) {
            std::vector<Step> path;
            push(path, root, nullptr);
            while (!path.empty()) {
                const Step step = path.back();
                const Entry& entry = directory.entries_[step.index];
                if (!step.leftDone) {
                    path.back().leftDone = true;
                    if (entry.left != cfb::noEntry) {
                        push(path, entry.left, &step);
                    }
                    continue;
                }
                path.pop_back();
                visit(step.index);
                if (entry.right != cfb::noEntry) {
                    push(path, entry.right, &step);
                }
            }
        }
    };

    void tell(const char* rule, std::size_t index, const char16_t* what) {
        findings_.add(rule, u"目录项 " + digits(std::int64_t(index)) + u"“" + entries_[index].name +
                                u"”" + what);
    }

    Findings& findings_;
    std::vector<Entry> entries_;
    std::vector<bool> reached_;
};

void claimStreams(const Directory& directory, ContainerSectors& sectors, Findings& findings) {
    const Entry& root = directory.entries()[0];
    sectors.setMiniStream(root.size, findings);
    sectors.claim(root.first, root.size, u"小流", findings);
    for (std::size_t i = 1; i < directory.entries().size(); ++i) {
        const Entry& entry = directory.entries()[i];
        if (entry.kind != cfb::kindStream || !directory.reached(i)) {
            continue;
        }
        const std::u16string owner = u"流“" + entry.name + u"”";
        if (entry.size < sectors.header().miniCutoff) {
            sectors.claimMini(entry.first, entry.size, owner, findings);
        } else {
            sectors.claim(entry.first, entry.size, owner, findings);
        }
    }
}

} // namespace

void checkDirectory(ContainerSectors& sectors, Findings& findings) {
    const ContainerSectors::Header& head = sectors.header();
    const Bytes bytes = sectors.claimAll(head.firstDirectorySector, u"目录", findings);
    Directory directory(bytes, head.majorVersion == 3, findings);
    if (!directory.hasRoot()) {
        findings.add("cfb.directory.kind", u"目录没有根目录项");
        return;
    }
    directory.checkNames();
    directory.checkTrees();
    claimStreams(directory, sectors, findings);
}

} // namespace qvnd::word
