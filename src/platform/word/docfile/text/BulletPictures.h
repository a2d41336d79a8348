#pragma once

#include "platform/word/docfile/document/DocumentContent.h"
#include "platform/word/docfile/document/Remarks.h"

#include <string_view>
#include <vector>

// The pictures of bullets. A file keeps them in its main story, as hidden characters in front of
// the last mark, under a bookmark of a fixed name; sprmCPbiIBullet counts them from its start
// ([MS-DOC] 2.6.1). In the program they stand in DocumentTables::bulletPictures, in that order, and
// no story holds them.
namespace qvnd::word {

// The bookmark. No other may have its name.
inline constexpr std::u16string_view nameOfBulletPictures = u"_PictureBullets";

// Whether a character with these properties shows a picture.
bool isBulletPicture(ByteView characterProperties);

// Takes the pictures out of the main story and answers the properties of their characters. Sections
// and bookmarks of `body`, which speak of that story, follow. Blanks between pictures stand for
// damaged ones and keep their places, so that the others keep theirs. From any other character on
// the text under the bookmark stays; what of the pictures is lost by that is told in `remarks`. The
// bookmark goes.
std::vector<PropertyListId> takeBulletPictures(Story& main, DocumentBody& body,
                                               const PropertyLists& lists, Remarks& remarks);

// The main story of one growing document with its pictures of bullets in it, save after save: their
// fragments stay the same.
class BulletPictureText {
public:
    // `main` ends in a paragraph mark. `pictures` goes on from the call before; the lists are those
    // that it names.
    SlicedText within(const SlicedText& main, const std::vector<PropertyListId>& pictures,
                      const PropertyLists& lists);

private:
    SlicedText slices_;
    std::size_t count_ = 0;
};

// Where the pictures stand in a main story of `length` characters that holds `count` of them.
Bookmark bulletPicturesMark(Cp length, Cp count);

} // namespace qvnd::word
