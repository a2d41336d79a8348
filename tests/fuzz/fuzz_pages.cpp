// Damages documents at random, lays each out and paints its pages: in time, with bounded memory,
// and the same page whenever it is shown.
//
//   fuzz_pages [--seed N] [--count N] [--keep FOLDER] [FILE...]
//
// Without files the small documents of fuzz_documents are damaged. Ends with 1 when there was a
// fault.

#include "fuzz/PageTarget.h"

int main(int argc, char** argv) {
    using namespace qvnd;
    test::FuzzOptions options = test::fuzzOptions({argv + 1, argv + argc});
    options.target = "pages";
    test::PageTarget pages;
    return test::fuzz(pages, options) ? 0 : 1;
}
