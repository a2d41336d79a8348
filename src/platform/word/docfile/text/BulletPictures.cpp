#include "platform/word/docfile/text/BulletPictures.h"

#include "platform/word/docfile/document/StoryParts.h"
#include "platform/word/docfile/format/SpecialCharacters.h"
#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"

#include <algorithm>
#include <utility>

namespace qvnd::word {

namespace {

// The properties of the characters there, from the first picture to the last, as long as nothing
// but blanks stands between them.
std::vector<PropertyListId> picturesAt(const Story& there, const PropertyLists& lists) {
    std::vector<PropertyListId> pictures;
    std::size_t behindLast = 0;
    std::size_t at = 0;
    for (const CharacterRun& run : there.characters) {
        const bool shows = isBulletPicture(lists[run.properties]);
        for (const std::size_t end = at + run.length; at < end; ++at) {
            const bool isPicture = there.text[at] == special::picture && shows;
            if (!isPicture && (there.text[at] != u' ' || shows)) {
                pictures.resize(behindLast);
                return pictures;
            }
            pictures.push_back(run.properties);
            behindLast = isPicture ? pictures.size() : behindLast;
        }
    }
    pictures.resize(behindLast);
    return pictures;
}

// Whether there is a place for pictures and none come, or more stand behind those that do.
bool losesPictures(const Story& there, std::size_t taken) {
    return taken == 0 ? !there.text.empty()
                      : there.text.find(special::picture, taken) != std::u16string::npos;
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

bool isBulletPicture(ByteView characterProperties) {
    return findSprm(characterProperties, sprm::CPicLocation) &&
           findSprm(characterProperties, sprm::CFSpec);
}

std::vector<PropertyListId> takeBulletPictures(Story& main, DocumentBody& body,
                                               const PropertyLists& lists, Remarks& remarks) {
    const auto found =
        std::find_if(body.bookmarks.begin(), body.bookmarks.end(), [](const Bookmark& bookmark) {
            return !bookmark.comment && bookmark.name == nameOfBulletPictures;
        });
    if (found == body.bookmarks.end()) {
        return {};
    }
    const Bookmark place = *found;
    body.bookmarks.erase(found);
    const Story there = partOf(main, place.start, place.end - place.start);
    std::vector<PropertyListId> pictures = picturesAt(there, lists);
    const auto count = static_cast<Cp>(pictures.size());
    if (losesPictures(there, pictures.size())) {
        remarks.emplace_back(u"项目符号的图片已损坏，未能全部读出。");
    }
    if (count == 0) {
        return {};
    }
    const Cp end = place.start + count;
    Story rest = partOf(main, 0, place.start);
    appendStory(rest, partOf(main, end, main.size() - end));
    main = std::move(rest);
    shortenSectionAt(place.start, count, body.sections);
    for (Bookmark& bookmark : body.bookmarks) {
        for (Cp* at : {&bookmark.start, &bookmark.end}) {
            *at = *at >= end ? *at - count : std::min(*at, place.start);
        }
    }
    return pictures;
}

SlicedText BulletPictureText::within(const SlicedText& main,
                                     const std::vector<PropertyListId>& pictures,
                                     const PropertyLists& lists) {
    if (pictures.size() > count_) {
        Story more;
        for (; count_ < pictures.size(); ++count_) {
            const bool shows = isBulletPicture(lists[pictures[count_]]);
            more.text.push_back(shows ? special::picture : u' ');
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
