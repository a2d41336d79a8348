#include "platform/word/engine/DocumentInsertion.h"

#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/engine/SectionProperties.h"
#include "platform/word/engine/StyleLookup.h"

#include <algorithm>
#include <utility>

namespace qvnd::word {

namespace {

class DocumentInsertion {
public:
    DocumentInsertion(WorkingDocument& document, Cp at, DocumentBody text)
        : document_(document), story_(document.main()), lists_(document.tables().lists), at_(at),
          text_(std::move(text)), length_(lengthOf(text_.main)) {}

    Cp run() {
        if (text_.main.empty()) {
            return at_;
        }
        prepareSections();
        beginParagraphIfNeeded();
        movePageBreak();
        separateInFront();
        story_.insert(at_, text_.main);
        for (Bookmark& bookmark : text_.bookmarks) {
            bookmark.start += at_;
            bookmark.end += at_;
            document_.addBookmark(std::move(bookmark));
        }
        cutSections();
        return at_ + length_;
    }

private:
    ByteView targetFormat() const { return lists_[target_]; }
    ByteView formatOf(const SectionRun& section) const { return lists_[section.properties]; }
    SectionRun& first() { return text_.sections.front(); }
    SectionRun& last() { return text_.sections.back(); }

    bool bringsHeaders(std::size_t section) const {
        return section < text_.headers.size() && hasHeaders(text_.headers[section]);
    }

    void prepareSections() {
        target_ = document_.sections().properties(document_.sections().indexAt(at_));
        const std::size_t ownNumbers = firstSectionWithHeaders(text_);
        for (std::size_t i = 0; i < std::min(ownNumbers, text_.sections.size()); ++i) {
            SectionRun& section = text_.sections[i];
            section.properties = lists_.intern(withoutOwnNumbering(formatOf(section)));
        }
        hasSections_ = text_.sections.size() > 1;
        isSeparated_ = hasSections_ && (bringsHeaders(0) || !looksLikeTarget(formatOf(first())));
    }

    bool looksLikeTarget(ByteView page) const {
        return samePage(page, targetFormat()) && sameColumns(page, targetFormat()) &&
               sameLinesAndNotes(page, targetFormat());
    }

    // How the first section begins behind the text in front of it.
    PropertyListId beginning() {
        const ByteView own = formatOf(first());
        if (!samePage(own, targetFormat())) {
            return lists_.intern(withBreak(own, SectionBreak::nextPage));
        }
        const bool onOnePage = !bringsHeaders(0) && sameColumns(own, targetFormat());
        return onOnePage ? lists_.intern(withBreak(own, SectionBreak::continuous))
                         : first().properties;
    }

    // A table and a section cannot begin in the middle of a paragraph.
    void beginParagraphIfNeeded() {
        if (story_.paragraphStart(at_) == at_) {
            return;
        }
        const ByteView look = lists_[WorkingStory(text_.main).paragraphLook(0).properties];
        if (isSeparated_ || sprmValue(look, sprm::PFInTable, 0) != 0) {
            story_.insertMark(at_, u'\r', story_.paragraphLook(at_ - 1),
                              story_.characterProperties(at_ - 1));
            ++at_;
        }
    }

    void movePageBreak() {
        const ParagraphLook look = story_.paragraphLook(at_);
        if (story_.paragraphStart(at_) != at_ ||
            sprmValue(lists_[look.properties], sprm::PFPageBreakBefore, 0) == 0) {
            return;
        }
        const Cp end = story_.paragraphEnd(at_);
        story_.changeParagraphs(end - 1, end, [&](const ParagraphLook& old) {
            const Bytes list = withoutSprm(lists_[old.properties], sprm::PFPageBreakBefore);
            return ParagraphLook{old.style, lists_.intern(list)};
        });
        WorkingStory inserted(text_.main);
        inserted.changeParagraphs(0, inserted.paragraphEnd(0), [&](const ParagraphLook& old) {
            const Bytes list = withSprm8(lists_[old.properties], sprm::PFPageBreakBefore, 1);
            return ParagraphLook{old.style, lists_.intern(list)};
        });
    }

    // Headings right in front lead over to the document and go with it, as do empty paragraphs
    // between them.
    Cp startOfHeadings() const {
        const Cp sectionStart = document_.sections().start(document_.sections().indexAt(at_));
        const StyleSheet& styles = document_.tables().styles;
        Cp result = at_;
        for (Cp start = at_; start > sectionStart;) {
            const ParagraphLook look = story_.paragraphLook(start - 1);
            const bool isEmpty =
                story_.paragraphStart(start - 1) == start - 1 && story_.at(start - 1) == u'\r';
            start = story_.paragraphStart(start - 1);
            if (headingLevel(styles, look.style) > 0 && !isEmpty) {
                result = start;
            } else if (!isEmpty) {
                break;
            }
        }
        return result;
    }

    void separateInFront() {
        if (!isSeparated_) {
            const PropertyListId format = lists_.intern(
                withBreakOf(withNumberingOf(formatOf(first()), targetFormat()), targetFormat()));
            front_ = format;
            return;
        }
        const Cp border = startOfHeadings();
        front_ = beginning();
        const Cp sectionStart = document_.sections().start(document_.sections().indexAt(at_));
        if (border == sectionStart) {
            front_ = lists_.intern(
                withBreakOf(bringsHeaders(0) ? Bytes(lists_[front_].begin(), lists_[front_].end())
                                             : withNumberingOf(lists_[front_], targetFormat()),
                            targetFormat()));
            return;
        }
        setBreakInFrontOf(border);
    }

    void setBreakInFrontOf(Cp border) {
        if (story_.at(border - 1) == u'\r') {
            story_.replaceMark(border - 1, u'\f');
        } else { // a table's row ends there
            const auto style = styleNumbered(document_.tables().styles, 0).value_or(0);
            story_.insertMark(border, u'\f', {style, PropertyListId::empty}, PropertyListId::empty);
            ++border;
            ++at_;
        }
        document_.sections().cut(border, target_);
        continueTarget();
    }

    // What follows in the section that was cut does not begin anew.
    void continueTarget() { target_ = lists_.intern(withoutOwnNumbering(targetFormat())); }

    void cutSections() {
        DocumentSections& sections = document_.sections();
        Cp at = at_;
        const std::size_t breaks = text_.sections.size() - 1;
        first().properties = front_;
        for (std::size_t i = 0; i < breaks; ++i) {
            at += text_.sections[i].length;
            sections.cut(at, text_.sections[i].properties);
        }
        if (breaks > 0) {
            continueTarget();
        }
        placeHeaders(breaks);
        const std::size_t rest = sections.indexAt(at_ + length_);
        if (hasSections_) {
            sections.setProperties(rest,
                                   lists_.intern(withBreakOf(targetFormat(), formatOf(last()))));
        }
    }

    // What follows the document shows the headers that were shown in front of it.
    void placeHeaders(std::size_t breaks) {
        DocumentSections& sections = document_.sections();
        Cp at = at_;
        const std::size_t rest = sections.indexAt(at_ + length_);
        std::size_t index = sections.indexAt(at);
        Cp end = sections.start(index) + sections.length(index);
        for (std::size_t i = 0; i < std::min(breaks, text_.headers.size()); ++i) {
            while (end <= at && index < rest) {
                end += sections.length(++index);
            }
            for (std::size_t kind = 0; kind < text_.headers[i].size(); ++kind) {
                if (SlicedText& header = text_.headers[i][kind]; !header.empty()) {
                    sections.bringHeader(index, rest, static_cast<HeaderKind>(kind),
                                         std::move(header));
                }
            }
            at += text_.sections[i].length;
        }
    }

    WorkingDocument& document_;
    WorkingStory& story_;
    PropertyLists& lists_;
    Cp at_;
    DocumentBody text_;
    Cp length_;
    PropertyListId target_ = PropertyListId::empty; // of the section that is inserted into
    PropertyListId front_ = PropertyListId::empty;  // of the first inserted section
    bool hasSections_ = false;
    bool isSeparated_ = false;
};

} // namespace

Cp insertDocument(WorkingDocument& document, Cp at, DocumentBody text) {
    return DocumentInsertion(document, at, std::move(text)).run();
}

} // namespace qvnd::word
