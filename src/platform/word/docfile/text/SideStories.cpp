#include "platform/word/docfile/text/SideStories.h"

#include "platform/word/docfile/text/NoteTables.h"

namespace qvnd::word {

namespace {

TextPart partOf(AnchorKind kind) {
    for (const SidePart& row : sideParts) {
        if (row.kind == kind) {
            return row.part;
        }
    }
    return TextPart::main;
}

std::vector<SidePlace> readNotes(const TextPartFacts& facts, const TableSource& table,
                                 Cp partLength, int& damage) {
    std::vector<SidePlace> places;
    for (const NotePlace& note : decodeNotes(table(facts.references->pair),
                                             table(facts.texts->pair), partLength, &damage)) {
        SidePlace place{note.at, note.text, {}, std::nullopt};
        place.story.automatic = note.automatic;
        places.push_back(std::move(place));
    }
    return places;
}

std::vector<SidePlace> readComments(const TextPartFacts& facts, const TableSource& table,
                                    Cp mainLength, Cp partLength, SideDamage& damage) {
    const CommentTableViews tables{table(facts.references->pair),   table(facts.texts->pair),
                                   table(FibPair::GrpXstAtnOwners), table(FibPair::AtrdExtra),
                                   table(FibPair::SttbfAtnBkmk),    table(FibPair::PlcfAtnBkf),
                                   table(FibPair::PlcfAtnBkl)};
    std::vector<SidePlace> places;
    for (CommentPlace& comment : decodeComments(tables, mainLength, partLength, &damage)) {
        places.push_back({comment.at,
                          comment.text,
                          {nullptr, true, std::move(comment.author), std::move(comment.initials),
                           comment.date, comment.depth, comment.ink},
                          comment.range});
    }
    return places;
}

void putNotes(const TextPartFacts& facts, std::span<const SidePlace> places, Cp mainLength,
              const TableTarget& put) {
    std::vector<NotePlace> notes;
    for (const SidePlace& place : places) {
        notes.push_back({place.at, place.story.automatic, place.text});
    }
    const NoteTables tables = encodeNotes(notes, mainLength);
    put(facts.references->pair, tables.references);
    put(facts.texts->pair, tables.texts);
}

void putComments(const TextPartFacts& facts, std::span<const SidePlace> places, Cp end,
                 const TableTarget& put) {
    std::vector<CommentPlace> comments;
    for (const SidePlace& place : places) {
        const SideStory& story = place.story;
        comments.push_back({place.at, place.text, story.author, story.initials, story.date,
                            place.range, story.depth, story.ink});
    }
    const CommentTables tables = encodeComments(comments, end);
    put(facts.references->pair, tables.references);
    put(facts.texts->pair, tables.texts);
    put(FibPair::GrpXstAtnOwners, tables.owners);
    put(FibPair::AtrdExtra, tables.dates);
    put(FibPair::SttbfAtnBkmk, tables.rangeTags);
    put(FibPair::PlcfAtnBkf, tables.rangeStarts);
    put(FibPair::PlcfAtnBkl, tables.rangeEnds);
}

} // namespace

std::vector<SidePlace> decodeSidePlaces(AnchorKind kind, const TableSource& table, Cp mainLength,
                                        Cp partLength, SideDamage& damage) {
    const TextPartFacts& facts = factsOf(partOf(kind));
    return kind == AnchorKind::comment ? readComments(facts, table, mainLength, partLength, damage)
                                       : readNotes(facts, table, partLength, damage.texts);
}

void encodeSidePlaces(AnchorKind kind, std::span<const SidePlace> places, Cp mainLength, Cp end,
                      const TableTarget& put) {
    const TextPartFacts& facts = factsOf(partOf(kind));
    if (kind == AnchorKind::comment) {
        putComments(facts, places, end, put);
    } else {
        putNotes(facts, places, mainLength, put);
    }
}

} // namespace qvnd::word
