#include "platform/word/docfile/text/BulletPictures.h"

#include "platform/word/docfile/document/StoryParts.h"
#include "platform/word/docfile/format/SpecialCharacters.h"
#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"

#include <algorithm>
#include <utility>

namespace qvnd::word {

namespace {

constexpr std::u16string_view nameOfBulletPictures = u"_PictureBullets";

bool showsPicture(ByteView characterProperties) {
    return findSprm(characterProperties, sprm::CPicLocation) &&
           findSprm(characterProperties, sprm::CFSpec);
}

// The properties of the characters there; nothing when one of them is no picture.
std::vector<PropertyListId> picturesAt(const Story& main, const Bookmark& place,
                                       const PropertyLists& lists) {
    const Story there = partOf(main, place.start, place.end - place.start);
    if (there.text.find_first_not_of(special::picture) != std::u16string::npos) {
        return {};
    }
    std::vector<PropertyListId> pictures;
    for (const CharacterRun& run : there.characters) {
        if (!showsPicture(lists[run.properties])) {
            return {};
        }
        pictures.insert(pictures.end(), run.length, run.properties);
    }
    return pictures;
}

void shortenSectionAt(Cp at, Cp count, std::vector<SectionRun>& sections) {
    Cp end = 0;
    for (SectionRun& section : sections) {
        end += section.length;
        if (at < end) {
            section.length -= count;
            return;
        }
    }
}

} // namespace

std::vector<PropertyListId> takeBulletPictures(Story& main, DocumentBody& body,
                                               const PropertyLists& lists) {
    const auto found =
        std::find_if(body.bookmarks.begin(), body.bookmarks.end(), [](const Bookmark& bookmark) {
            return !bookmark.comment && bookmark.name == nameOfBulletPictures;
        });
    if (found == body.bookmarks.end()) {
        return {};
    }
    const Bookmark place = *found;
    body.bookmarks.erase(found);
    std::vector<PropertyListId> pictures = picturesAt(main, place, lists);
    const auto count = static_cast<Cp>(pictures.size());
    if (count == 0) {
        return {};
    }
    Story rest = partOf(main, 0, place.start);
    appendStory(rest, partOf(main, place.end, main.size() - place.end));
    main = std::move(rest);
    shortenSectionAt(place.start, count, body.sections);
    for (Bookmark& bookmark : body.bookmarks) {
        for (Cp* at : {&bookmark.start, &bookmark.end}) {
            *at = *at >= place.end ? *at - count : std::min(*at, place.start);
        }
    }
    return pictures;
}

SlicedText BulletPictureText::within(const SlicedText& main,
                                     const std::vector<PropertyListId>& pictures) {
    if (pictures.size() > count_) {
        Story more;
        for (; count_ < pictures.size(); ++count_) {
            more.text.push_back(special::picture);
            more.characters.push_back({1, pictures[count_]});
        }
        more.paragraphs.push_back({more.size()});
        append(slices_, slicesOf(std::move(more)));
    }
    SlicedText result = main;
    StorySlice mark = result.back();
    mark.begin += mark.length - 1;
    mark.length = 1;
    if (--result.back().length == 0) {
        result.pop_back();
    }
    append(result, slices_);
    result.push_back(std::move(mark));
    return result;
}

Bookmark bulletPicturesMark(Cp length, Cp count) {
    return {std::u16string(nameOfBulletPictures), length - 1 - count, length - 1};
}

} // namespace qvnd::word
