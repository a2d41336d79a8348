#pragma once

#include "platform/word/docfile/document/DocumentContent.h"

#include <array>
#include <cstddef>
#include <functional>
#include <vector>

namespace qvnd::word {

// The sections of a main story under work: lengths kept in step with the text, headers with the
// sections. There is always at least one section.
class DocumentSections {
public:
    // Works on both, which must outlive this; as many header sets as sections.
    DocumentSections(std::vector<SectionRun>& runs, std::vector<HeaderSet>& headers);

    std::size_t count() const { return runs_.size(); }
    // The section of the character at `at`; behind the last character the last section.
    std::size_t indexAt(Cp at) const;
    Cp start(std::size_t index) const;
    Cp length(std::size_t index) const { return runs_[index].length; }
    PropertyListId properties(std::size_t index) const { return runs_[index].properties; }
    void setProperties(std::size_t index, PropertyListId properties);

    // The section whose header or footer of that kind the section shows: itself or the nearest
    // one before that has its own; the first one when none has.
    // Headers that came with an inserted document count for the sections of that document alone.
    std::size_t headerOwner(std::size_t index, HeaderKind kind) const;
    // Gives the section a header of an inserted document. The section `behind`, the first one after
    // that document, shows the headers that are shown in front of it.
    void bringHeader(std::size_t index, std::size_t behind, HeaderKind kind, SlicedText header);
    // Writes the headers that they show into the sections behind inserted documents, for the
    // writer. `blank` goes into those that show none.
    void fillReturned(const SlicedText& blank);

    // Splits the section at `at`, behind a break mark. The front part gets the properties `front`
    // and keeps the headers; the rest inherits them.
    void cut(Cp at, PropertyListId front);

    void inserted(Cp at, Cp length);
    // A section whose break mark is erased becomes part of the next one.
    void erased(Cp start, Cp end);
    // The text got another version, with the same break marks. `moved` tells where a position lies.
    void replaced(const std::function<Cp(Cp)>& moved);

private:
    struct Place {
        std::size_t index = 0;
        Cp start = 0;
    };
    // Whose header of one kind a section has, when it has one.
    enum class Origin : std::uint8_t { document, brought, returned };
    using Origins = std::array<Origin, 6>; // by HeaderKind

    Place placeOf(Cp at) const;

    std::vector<Origins> origins_; // by section
    std::vector<SectionRun>& runs_;
    std::vector<HeaderSet>& headers_;
    Cp size_ = 0;
};

} // namespace qvnd::word
