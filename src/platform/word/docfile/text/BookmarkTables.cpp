#include "platform/word/docfile/text/BookmarkTables.h"

#include "platform/word/docfile/format/Plc.h"
#include "platform/word/docfile/format/Sttb.h"
#include "platform/word/docfile/text/BulletPictures.h"

#include <algorithm>
#include <numeric>
#include <string_view>
#include <unordered_map>

namespace qvnd::word {

namespace {

constexpr std::size_t cpSize = 4;
constexpr std::size_t longestName = 40;

Cp cpAt(ByteView plc, std::size_t index) {
    LittleEndianReader reader(plc, "PlcfBkl");
    reader.seek(index * cpSize);
    return reader.u32();
}

// Whether the bookmark comes in. One whose end is lost stands at its start.
bool comesIn(Bookmark& bookmark, bool hasEnd, Cp mainLength, Cp textLength, Remarks& remarks) {
    const auto tell = [&](std::u16string_view what) {
        remarks.push_back(u"书签“" + bookmark.name + u"”" + std::u16string(what));
    };
    if (bookmark.name.empty()) {
        tell(u"没有名称，未读入");
        return false;
    }
    const bool rises = hasEnd && bookmark.start <= bookmark.end;
    if (rises && bookmark.end <= mainLength) {
        return true;
    }
    if (bookmark.start >= std::max(mainLength, textLength)) {
        tell(u"不在任何文字中，未读入");
        return false;
    }
    if (rises && bookmark.start >= mainLength && bookmark.end <= textLength) {
        return true;
    }
    tell(u"的结束位置已损坏，只保留了起点");
    bookmark.end = bookmark.start;
    return true;
}

// Indexes of `bookmarks`, by start or by end.
template <typename Position>
std::vector<std::size_t> orderBy(std::span<const Bookmark> bookmarks, Position position) {
    std::vector<std::size_t> order(bookmarks.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        return position(bookmarks[a]) < position(bookmarks[b]);
    });
    return order;
}

std::vector<std::size_t> placesOf(const std::vector<std::size_t>& order) {
    std::vector<std::size_t> places(order.size());
    for (std::size_t i = 0; i < order.size(); ++i) {
        places[order[i]] = i;
    }
    return places;
}

Bytes encodeNames(std::span<const Bookmark> bookmarks, const std::vector<std::size_t>& order) {
    Sttb names;
    for (const std::size_t i : order) {
        names.entries.push_back({bookmarks[i].name, {}});
    }
    return encodeSttb(names);
}

Bytes encodeStarts(std::span<const Bookmark> bookmarks, const std::vector<std::size_t>& order,
                   const std::vector<std::size_t>& endPlaces, Cp end) {
    LittleEndianWriter writer;
    for (const std::size_t i : order) {
        writer.u32(bookmarks[i].start);
    }
    writer.u32(end);
    for (const std::size_t i : order) {
        writer.u16(static_cast<unsigned>(endPlaces[i]));
        writer.u16(bookmarks[i].flags);
    }
    return writer.take();
}

Bytes encodeEnds(std::span<const Bookmark> bookmarks, const std::vector<std::size_t>& order,
                 Cp end) {
    LittleEndianWriter writer;
    for (const std::size_t i : order) {
        writer.u32(bookmarks[i].end);
    }
    writer.u32(end);
    return writer.take();
}

// Hidden ones first.
void leaveOutBeyond(std::size_t room, std::vector<Bookmark>& bookmarks, Remarks& remarks) {
    if (bookmarks.size() <= room) {
        return;
    }
    std::vector<const Bookmark*> all;
    all.reserve(bookmarks.size());
    for (const Bookmark& bookmark : bookmarks) {
        all.push_back(&bookmark);
    }
    const std::vector<bool> stays = bookmarksWithin(room, all, isHidden);
    std::size_t next = 0;
    const auto gone = std::erase_if(bookmarks, [&](const Bookmark&) { return !stays[next++]; });
    if (gone > 0) {
        remarks.push_back(u"有 " + digits(static_cast<std::int64_t>(gone)) +
                          u" 个书签未读入，一个文档最多 16380 个书签，其中 1 个留给项目符号的图片");
    }
}

} // namespace

std::vector<Bookmark> decodeBookmarks(const BookmarkTableViews& tables, Cp mainLength,
                                      Cp textLength, Remarks& remarks) {
    const Sttb names = decodeSttb(tables.names).table;
    const std::size_t starts =
        tables.starts.size() < cpSize ? 0 : (tables.starts.size() - cpSize) / (cpSize + fbkfSize);
    const std::size_t ends =
        tables.ends.size() < cpSize ? 0 : (tables.ends.size() - cpSize) / cpSize;
    std::vector<Bookmark> bookmarks;
    for (std::size_t i = 0; i < std::min(starts, names.entries.size()); ++i) {
        LittleEndianReader fbkf(tables.starts, "PlcfBkf");
        fbkf.seek((starts + 1) * cpSize + i * fbkfSize);
        const std::size_t endPlace = fbkf.u16();
        Bookmark bookmark{names.entries[i].text, cpAt(tables.starts, i), 0, fbkf.u16()};
        const bool hasEnd = endPlace < ends;
        bookmark.end = hasEnd ? cpAt(tables.ends, endPlace) : 0;
        bookmark.name.resize(std::min(bookmark.name.size(), longestName));
        if (comesIn(bookmark, hasEnd, mainLength, textLength, remarks)) {
            bookmarks.push_back(std::move(bookmark));
        }
    }
    if (starts != names.entries.size()) {
        remarks.push_back(u"书签表的名称与位置个数不同，多出的未读入");
    }
    leaveOutBeyond(mostOwnBookmarks, bookmarks, remarks);
    return bookmarks;
}

std::vector<Bookmark> bookmarksAside(const SlicedText& text, Cp at) {
    std::vector<Bookmark> all;
    std::unordered_map<std::u16string_view, std::size_t> places; // by name
    for (const StorySlice& slice : text) {
        const Cp sliceEnd = slice.begin + slice.length;
        for (const Bookmark& bookmark : slice.fragment->bookmarks) {
            const Cp from = std::max(bookmark.start, slice.begin);
            const Cp to = std::min(bookmark.end, sliceEnd);
            if (from > to || (from == to && bookmark.start != bookmark.end)) {
                continue;
            }
            const auto [known, isNew] = places.try_emplace(bookmark.name, all.size());
            if (isNew) {
                all.push_back({bookmark.name, from - slice.begin + at, 0, bookmark.flags});
            }
            all[known->second].end = to - slice.begin + at;
        }
        at += slice.length;
    }
    return all;
}

bool isHidden(const Bookmark& bookmark) { return bookmark.name.starts_with(u'_'); }

std::vector<bool> bookmarksWithin(std::size_t room, std::span<const Bookmark* const> bookmarks,
                                  const std::function<bool(const Bookmark&)>& goesFirst) {
    const auto found =
        std::find_if(bookmarks.begin(), bookmarks.end(), [](const Bookmark* bookmark) {
            return !bookmark->comment && bookmark->name == nameOfBulletPictures;
        });
    const Bookmark* const pictures = found != bookmarks.end() ? *found : nullptr;
    const auto takesRoom = [&](const Bookmark* bookmark) {
        return !bookmark->comment && bookmark != pictures;
    };
    const auto later = static_cast<std::size_t>(
        std::count_if(bookmarks.begin(), bookmarks.end(), [&](const Bookmark* bookmark) {
            return takesRoom(bookmark) && !goesFirst(*bookmark);
        }));
    std::size_t laterRoom = std::min(later, room);
    std::size_t firstRoom = room - laterRoom;
    std::vector<bool> stays;
    for (const Bookmark* bookmark : bookmarks) {
        if (!takesRoom(bookmark)) {
            stays.push_back(true);
            continue;
        }
        std::size_t& left = goesFirst(*bookmark) ? firstRoom : laterRoom;
        stays.push_back(left > 0);
        left -= left > 0 ? 1 : 0;
    }
    return stays;
}

BookmarkTables encodeBookmarks(std::span<const Bookmark> bookmarks, Cp end) {
    if (bookmarks.empty()) {
        return {};
    }
    const auto byStart = orderBy(bookmarks, [](const Bookmark& b) { return b.start; });
    const auto byEnd = orderBy(bookmarks, [](const Bookmark& b) { return b.end; });
    return {encodeNames(bookmarks, byStart), encodeStarts(bookmarks, byStart, placesOf(byEnd), end),
            encodeEnds(bookmarks, byEnd, end)};
}

} // namespace qvnd::word
