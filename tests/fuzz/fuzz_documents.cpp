// Damages documents at random and puts each into a new document: what the reader accepts must give
// a sound file, in time and with bounded memory.
//
//   fuzz_documents [--seed N] [--count N] [--keep FOLDER] [FILE...]
//
// Without files two small documents are damaged: one with one of everything that the checker looks
// at, one with an embedded object. Ends with 1 when there was a fault.

#include "fuzz/DocumentTarget.h"

int main(int argc, char** argv) {
    using namespace qvnd;
    test::FuzzOptions options = test::fuzzOptions({argv + 1, argv + argc});
    options.target = "documents";
    test::DocumentTarget documents;
    return test::fuzz(documents, options) ? 0 : 1;
}
