// Damages documents at random and puts each into a new document: what the reader accepts must give
// a sound file, in time and with bounded memory.
//
//   fuzz_documents [--seed N] [--count N] [--keep FOLDER] [FILE...]
//
// Without files a small document with one of everything is damaged. Ends with 1 when there was a
// fault.

#include "fuzz/DocumentTarget.h"
#include "fuzz/FuzzRun.h"
#include "platform/word/check/SoundDocument.h"

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
    std::vector<word::Bytes> ownFiles() const override { return {test::SoundDocument().bytes()}; }
};

} // namespace

int main(int argc, char** argv) {
    test::FuzzOptions options = test::fuzzOptions({argv + 1, argv + argc});
    options.target = "documents";
    Documents documents;
    return test::fuzz(documents, options) ? 0 : 1;
}
