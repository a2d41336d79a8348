// Damages documents at random and puts each into a new document: what the reader accepts must give
// a sound file, in time and with bounded memory.
//
//   fuzz_documents [--seed N] [--count N] [--keep FOLDER] [FILE...]
//
// Without files two small documents are damaged: one with one of everything that the checker looks
// at, one with an embedded object. Ends with 1 when there was a fault.

#include "fuzz/DocumentTarget.h"
#include "fuzz/FuzzRun.h"
#include "platform/word/check/SoundDocument.h"
#include "platform/word/docfile/writer/DocumentWriter.h"
#include "support/ContentBuilder.h"
#include "support/MemoryFolder.h"

namespace {

using namespace qvnd;

class Documents : public test::FuzzTarget {
public:
    Outcome run(word::ByteView file) override {
        const test::InsertionOutcome inserted = test::insertAndCheck(file);
        Outcome outcome{inserted.accepted, {}};
        for (const std::string& rule : inserted.broken) {
            outcome.fault += " " + rule;
        }
        return outcome;
    }
    std::vector<word::Bytes> ownFiles() const override {
        return {test::SoundDocument().bytes(), documentWithObject()};
    }

private:
    // An embedded object, and lists that no page holds.
    static word::Bytes documentWithObject() {
        auto object = std::make_shared<word::EmbeddedObject>();
        object->entries = {{u"\u0001Ole", false, {}, word::Bytes(20)},
                           {u"Inner", true, {9}, {}},
                           {u"Inner/Contents", false, {}, word::Bytes(5000)}};
        const word::Bytes marks =
            word::withSprm8(word::withSprm8({}, word::sprm::CFSpec, 1), word::sprm::CFOle2, 1);
        word::Bytes longList;
        for (unsigned i = 0; i < 200; ++i) {
            const word::Bytes entry = word::withSprm16({}, word::sprm::PDxaLeft, i);
            longList.insert(longList.end(), entry.begin(), entry.end());
        }
        test::ContentBuilder builder;
        builder.content.tables.objects = {object};
        builder.add({test::plain(u"\u0013EMBED x"),
                     {u"\u0014", word::withSprm32(marks, word::sprm::CObjLocation, 0)},
                     test::plain(u"y\u0015\r")},
                    1, longList);
        const auto folder = std::make_shared<test::MemoryFolder>();
        word::DocumentWriter(folder).saveAs("/a.doc", builder.content);
        return folder->bytes("/a.doc");
    }
};

} // namespace

int main(int argc, char** argv) {
    test::FuzzOptions options = test::fuzzOptions({argv + 1, argv + argc});
    options.target = "documents";
    Documents documents;
    return test::fuzz(documents, options) ? 0 : 1;
}
