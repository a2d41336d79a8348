#include "platform/word/docfile/text/CommentTables.h"

#include "platform/word/docfile/format/Plc.h"
#include "platform/word/docfile/format/Sttb.h"

#include <algorithm>
#include <numeric>
#include <unordered_map>
#include <unordered_set>

namespace qvnd::word {

namespace {

constexpr std::size_t atrdSize = 30;      // ATRDPre10
constexpr std::size_t initialsRoom = 9;   // of its xstUsrInitl, behind the length
constexpr std::size_t atrdExtraSize = 18; // ATRDPost10
constexpr std::uint16_t atnbeSize = 10;
constexpr std::uint16_t rangeOfComment = 0x0100; // ATNBE.bmc
constexpr std::uint32_t noTag = 0xFFFFFFFF;

// Those that a comment can name, with 16 bits.
std::vector<std::u16string> decodeOwners(ByteView bytes) {
    constexpr std::size_t lastOwner = 0xFFFF;
    std::vector<std::u16string> owners;
    LittleEndianReader reader(bytes, "GrpXstAtnOwners");
    while (reader.remaining() >= 2 && owners.size() <= lastOwner) {
        const std::size_t length = reader.u16();
        if (length * 2 > reader.remaining()) {
            break;
        }
        owners.push_back(reader.text(length));
    }
    return owners;
}

using Ranges = std::unordered_map<std::uint32_t, CommentRange>; // by tag; those that are sound

Ranges decodeRanges(const CommentTableViews& tables, Cp mainLength) {
    const Sttb tags = decodeSttb(tables.rangeTags).table;
    const Plc starts = decodePlc(tables.rangeStarts, fbkfSize);
    const Plc ends = decodePlc(tables.rangeEnds, 0);
    Ranges ranges;
    for (std::size_t i = 0; i < std::min(tags.entries.size(), starts.count()); ++i) {
        const std::size_t end = LittleEndianReader(starts.element(i), "FBKF").u16();
        if (tags.entries[i].extra.size() < atnbeSize || end >= ends.count()) {
            continue;
        }
        LittleEndianReader atnbe(tags.entries[i].extra, "ATNBE");
        atnbe.skip(2);
        const CommentRange range{starts.positions[i], ends.positions[end]};
        if (range.start <= range.end && range.end <= mainLength) {
            ranges.try_emplace(atnbe.u32(), range);
        }
    }
    return ranges;
}

// What AtrdExtra says of a comment.
struct Extra {
    std::uint32_t date = 0;
    std::uint32_t depth = 0;
    bool ink = false;
};
constexpr std::uint32_t inkFlag = 2; // fInkAtn

struct Reference {
    std::u16string initials;
    std::size_t owner = 0;
    std::uint32_t tag = noTag;
};

Reference decodeReference(ByteView atrd) {
    LittleEndianReader reader(atrd, "ATRDPre10");
    Reference reference;
    const std::size_t length = reader.u16();
    reference.initials = reader.text(initialsRoom);
    reference.initials.resize(std::min(length, initialsRoom));
    reference.owner = reader.u16();
    reader.skip(4);
    reference.tag = reader.u32();
    return reference;
}

Extra extraOf(ByteView extras, std::size_t index) {
    LittleEndianReader reader(extras, "AtrdExtra");
    Extra extra;
    if ((index + 1) * atrdExtraSize <= extras.size()) {
        reader.seek(index * atrdExtraSize);
        extra.date = reader.u32();
        reader.skip(2);
        extra.depth = reader.u32();
        reader.skip(4); // the comment that it answers: the depths tell it
        extra.ink = (reader.u32() & inkFlag) != 0;
    }
    return extra;
}

// Depths of comments in their order: no answer is more than one deeper than what stands before it.
class Depths {
public:
    std::uint32_t next(std::uint32_t depth) {
        const auto deepest = static_cast<std::uint32_t>(last_.size());
        last_.resize(std::min(depth, deepest) + std::size_t{1});
        last_.back() = count_++;
        return static_cast<std::uint32_t>(last_.size() - 1);
    }

    // From the last comment back to the one that it answers; 0 where it answers none.
    std::int32_t toAnswered() const {
        return last_.size() < 2 ? 0 : last_[last_.size() - 2] - last_.back();
    }

private:
    std::vector<std::int32_t> last_; // the last comment of each depth
    std::int32_t count_ = 0;
};

// The comments' tables under way.
class CommentWriter {
public:
    explicit CommentWriter(std::span<const CommentPlace> comments) : comments_(comments) {}

    CommentTables write(Cp end) {
        std::vector<std::uint32_t> positions;
        std::vector<TextPlace> texts;
        for (const CommentPlace& comment : comments_) {
            positions.push_back(comment.at);
            texts.push_back(comment.text);
            writeReference(comment);
            writeExtra(comment);
        }
        positions.push_back(end);
        CommentTables tables;
        tables.references = encodePlc(positions, atrds_.data());
        tables.texts = encodeTextPlaces(texts);
        tables.owners = encodeOwners();
        tables.dates = dates_.take();
        writeRanges(tables, end);
        return tables;
    }

private:
    void writeExtra(const CommentPlace& comment) {
        dates_.u32(comment.date);
        dates_.zeros(2);
        dates_.u32(depths_.next(comment.depth));
        dates_.u32(static_cast<std::uint32_t>(depths_.toAnswered()));
        dates_.u32(comment.ink ? inkFlag : 0);
    }

    void writeReference(const CommentPlace& comment) {
        const std::u16string initials = comment.initials.substr(0, initialsRoom);
        atrds_.u16(static_cast<unsigned>(initials.size()));
        atrds_.text(initials);
        atrds_.zeros(2 * (initialsRoom - initials.size()));
        const auto [owner, isNew] =
            ownerPlaces_.try_emplace(comment.author, static_cast<unsigned>(owners_.size()));
        atrds_.u16(owner->second);
        if (isNew) {
            owners_.push_back(comment.author);
        }
        atrds_.zeros(4);
        if (comment.range && ranges_.size() < mostCommentRanges) {
            atrds_.u32(static_cast<std::uint32_t>(ranges_.size()));
            ranges_.push_back(*comment.range);
        } else {
            atrds_.u32(noTag);
        }
    }

    Bytes encodeOwners() const {
        LittleEndianWriter writer;
        for (const std::u16string& owner : owners_) {
            writer.u16(static_cast<unsigned>(owner.size()));
            writer.text(owner);
        }
        return writer.take();
    }

    // Tags count the ranges; both tables of positions ascend, so each has an order of its own.
    void writeRanges(CommentTables& tables, Cp end) const {
        if (ranges_.empty()) {
            return;
        }
        const std::vector<std::size_t> byStart = order(&CommentRange::start);
        const std::vector<std::size_t> byEnd = order(&CommentRange::end);
        std::vector<std::size_t> endPlaces(byEnd.size());
        for (std::size_t i = 0; i < byEnd.size(); ++i) {
            endPlaces[byEnd[i]] = i;
        }
        Sttb tags;
        tags.extraSize = atnbeSize;
        std::vector<std::uint32_t> starts;
        std::vector<std::uint32_t> ends;
        starts.reserve(byStart.size() + 1);
        ends.reserve(byEnd.size() + 1);
        LittleEndianWriter fbkfs;
        for (const std::size_t i : byStart) {
            LittleEndianWriter atnbe;
            atnbe.u16(rangeOfComment);
            atnbe.u32(static_cast<std::uint32_t>(i));
            atnbe.u32(noTag);
            tags.entries.push_back({u"", atnbe.take()});
            starts.push_back(ranges_[i].start);
            fbkfs.u16(static_cast<unsigned>(endPlaces[i]));
            fbkfs.u16(0);
        }
        for (const std::size_t i : byEnd) {
            ends.push_back(ranges_[i].end);
        }
        starts.push_back(end);
        ends.push_back(end);
        tables.rangeTags = encodeSttb(tags);
        tables.rangeStarts = encodePlc(starts, fbkfs.data());
        tables.rangeEnds = encodePlc(ends, {});
    }

    std::vector<std::size_t> order(Cp CommentRange::*position) const {
        std::vector<std::size_t> result(ranges_.size());
        std::iota(result.begin(), result.end(), std::size_t{0});
        std::stable_sort(result.begin(), result.end(), [&](std::size_t a, std::size_t b) {
            return ranges_[a].*position < ranges_[b].*position;
        });
        return result;
    }

    std::span<const CommentPlace> comments_;
    LittleEndianWriter atrds_;
    LittleEndianWriter dates_;
    Depths depths_;
    std::vector<std::u16string> owners_;
    std::unordered_map<std::u16string, unsigned> ownerPlaces_;
    std::vector<CommentRange> ranges_;
};

} // namespace

std::vector<CommentPlace> decodeComments(const CommentTableViews& tables, Cp mainLength,
                                         Cp partLength, SideDamage* damage) {
    const Plc references = decodePlc(tables.references, atrdSize);
    const std::vector<TextPlace> texts = decodeTextPlaces(tables.texts, partLength);
    const std::vector<std::u16string> owners = decodeOwners(tables.owners);
    const Ranges ranges = decodeRanges(tables, mainLength);
    std::vector<CommentPlace> comments;
    std::unordered_set<Cp> taken;
    Depths depths;
    for (std::size_t i = 0; i < references.count(); ++i) {
        if (i >= texts.size() || texts[i].length == 0 ||
            !taken.insert(references.positions[i]).second) {
            if (damage != nullptr) {
                ++damage->texts;
            }
            continue;
        }
        const Reference reference = decodeReference(references.element(i));
        const Extra extra = extraOf(tables.dates, i);
        CommentPlace comment{references.positions[i],  texts[i],   {},
                             reference.initials,       extra.date, std::nullopt,
                             depths.next(extra.depth), extra.ink};
        if (reference.owner < owners.size()) {
            comment.author = owners[reference.owner];
        }
        const auto range = ranges.find(reference.tag);
        if (range != ranges.end() && range->second.start < range->second.end) {
            comment.range = range->second;
        }
        if (damage != nullptr && reference.tag != noTag && range == ranges.end()) {
            ++damage->ranges;
        }
        comments.push_back(std::move(comment));
    }
    return comments;
}

CommentTables encodeComments(std::span<const CommentPlace> comments, Cp end) {
    return comments.empty() ? CommentTables{} : CommentWriter(comments).write(end);
}

} // namespace qvnd::word
