#pragma once

#if __has_include(<sys/resource.h>)
#include <sys/resource.h>
#endif

namespace qvnd::bench {

// The most memory that the process has held so far, in megabytes; 0 where the system does not tell.
inline double peakMegabytes() {
#if __has_include(<sys/resource.h>)
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) / 1024;
#else
    return 0;
#endif
}

} // namespace qvnd::bench
