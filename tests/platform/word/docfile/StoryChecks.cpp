#include "platform/word/docfile/StoryChecks.h"

#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"

#include <cstdint>

namespace qvnd::test {

using namespace word;

namespace {

class Faults {
public:
    explicit Faults(const DocumentContent& document) : document_(document) {}

    std::vector<std::string> all() {
        story(*joined(document_.main), "main");
        for (const HeaderSet& set : document_.headers) {
            for (const auto& header : set) {
                if (!header.empty()) {
                    story(*joined(header), "header");
                }
            }
        }
        sections();
        bookmarks();
        return std::move(faults_);
    }

private:
    void demand(bool holds, const std::string& rule) {
        if (!holds) {
            faults_.push_back(rule);
        }
    }

    void story(const Story& story, const std::string& name) {
        demand(!story.text.empty() && story.text.back() == 0x0D, name + ": ends in no mark");
        lengths(story, name);
        for (const CharacterRun& run : story.characters) {
            characterList(run.properties, name);
        }
        for (const ParagraphRun& run : story.paragraphs) {
            paragraph(run, name);
        }
        fields(story, name);
    }

    void lengths(const Story& story, const std::string& name) {
        std::uint64_t characters = 0;
        std::uint64_t paragraphs = 0;
        for (const CharacterRun& run : story.characters) {
            demand(run.length > 0, name + ": empty run");
            characters += run.length;
        }
        for (const ParagraphRun& run : story.paragraphs) {
            demand(run.length > 0, name + ": empty paragraph");
            paragraphs += run.length;
        }
        demand(characters == story.text.size(), name + ": runs do not add up");
        demand(paragraphs == story.text.size(), name + ": paragraphs do not add up");
    }

    bool exists(PropertyListId id) const {
        return static_cast<std::size_t>(id) < document_.tables.lists.size();
    }

    void characterList(PropertyListId id, const std::string& name) {
        demand(exists(id), name + ": list does not exist");
        const ParsedSprms parsed = parseSprms(document_.tables.lists[id]);
        demand(parsed.complete, name + ": list breaks off");
        for (const SprmView& entry : parsed.sprms) {
            demand(groupOf(entry.opcode) == SprmGroup::character, name + ": no character entry");
            if (entry.opcode == sprm::CPicLocation) {
                const std::uint32_t index = LittleEndianReader(entry.operand, "index").u32();
                demand(index < document_.tables.blobs.size(), name + ": blob does not exist");
            }
        }
    }

    void paragraph(const ParagraphRun& run, const std::string& name) {
        const auto& styles = document_.tables.styles.styles;
        demand(run.style < styles.size() && styles[run.style], name + ": style does not exist");
        demand(exists(run.properties), name + ": list does not exist");
        demand(parseSprms(document_.tables.lists[run.properties]).complete,
               name + ": paragraph list breaks off");
        demand(!findSprm(document_.tables.lists[run.properties], sprm::PHugePapx),
               name + ": sprmPHugePapx left");
    }

    void fields(const Story& story, const std::string& name) {
        std::vector<bool> separated;
        std::size_t inText = 0;
        for (const char16_t c : story.text) {
            inText += c >= 0x13 && c <= 0x15 ? 1 : 0;
        }
        demand(inText == story.fields.size(), name + ": field characters without a field");
        Cp last = 0;
        for (const FieldMark& mark : story.fields) {
            demand(mark.at < story.size() && story.text[mark.at] == mark.character,
                   name + ": field mark without its character");
            demand(&mark == &story.fields.front() || mark.at > last, name + ": fields descend");
            last = mark.at;
            if (mark.character == 0x13) {
                separated.push_back(false);
                continue;
            }
            demand(!separated.empty(), name + ": field without begin");
            if (separated.empty()) {
                continue;
            }
            demand(mark.character != 0x14 || !separated.back(), name + ": two separators");
            separated.back() = true;
            if (mark.character == 0x15) {
                separated.pop_back();
            }
        }
        demand(separated.empty(), name + ": field without end");
    }

    void sections() {
        std::uint64_t total = 0;
        for (const SectionRun& section : document_.sections) {
            total += section.length;
            demand(exists(section.properties), "sections: list does not exist");
        }
        demand(!document_.sections.empty(), "sections: none");
        demand(total == joined(document_.main)->text.size(), "sections: lengths do not add up");
        demand(document_.headers.size() == document_.sections.size(),
               "headers: not one set a section");
    }

    void bookmarks() {
        for (const Bookmark& bookmark : document_.bookmarks) {
            demand(bookmark.start <= bookmark.end && bookmark.end <= joined(document_.main)->size(),
                   "bookmarks: outside of the main story");
        }
    }

    const DocumentContent& document_;
    std::vector<std::string> faults_;
};

} // namespace

std::vector<std::string> documentFaults(const DocumentContent& document) {
    return Faults(document).all();
}

} // namespace qvnd::test
