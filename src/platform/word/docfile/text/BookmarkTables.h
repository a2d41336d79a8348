#pragma once

#include "platform/word/docfile/document/DocumentContent.h"
#include "platform/word/docfile/document/Remarks.h"

#include <functional>
#include <span>

namespace qvnd::word {

// Bookmarks ([MS-DOC] 2.8.10, 2.8.12, 2.9.279): names, where each starts, where each ends.
struct BookmarkTables {
    Bytes names;  // SttbfBkmk
    Bytes starts; // PlcfBkf
    Bytes ends;   // PlcfBkl
};
struct BookmarkTableViews {
    ByteView names;
    ByteView starts;
    ByteView ends;
};

// More keep Word from opening a document of this format (Microsoft's notes on ISO/IEC 29500,
// 2.1.360).
inline constexpr std::size_t mostBookmarks = 16380;
// What of them texts may have: the pictures of bullets take one as soon as there are any.
inline constexpr std::size_t mostOwnBookmarks = mostBookmarks - 1;

// Whether its name begins with "_": word processors set such ones themselves and do not list them.
bool isHidden(const Bookmark& bookmark);

// Says of each bookmark whether it stays where there is room for `room` of them: such that
// `goesFirst` says so of go before all others, and of each kind the last ones. Ranges of comments
// and the place of the pictures of bullets stay and take no room.
std::vector<bool> bookmarksWithin(std::size_t room, std::span<const Bookmark* const> bookmarks,
                                  const std::function<bool(const Bookmark&)>& goesFirst);

// The bookmarks that lie within the first `mainLength` characters, the main story, or behind it
// within the first `textLength`, in the other parts; there one may reach over several texts. One
// whose end is missing, lies before its start, outside of all text or in another part than the main
// story stands at its start; it is named in `remarks`, as are those that lie nowhere. Those beyond
// mostOwnBookmarks are left out and counted there.
std::vector<Bookmark> decodeBookmarks(const BookmarkTableViews& tables, Cp mainLength,
                                      Cp textLength, Remarks& remarks);

// The bookmarks of texts aside by their positions in all text, when the slices begin at `at`. What
// of a bookmark stands in several slices is one again.
std::vector<Bookmark> bookmarksAside(const SlicedText& text, Cp at);

// `end` is the position that closes both tables: the length of all stories and at least every end
// of a bookmark. All three are empty when there is no bookmark.
BookmarkTables encodeBookmarks(std::span<const Bookmark> bookmarks, Cp end);

} // namespace qvnd::word
