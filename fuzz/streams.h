#ifndef FUZZ_STREAMS_H
#define FUZZ_STREAMS_H

/// What the library writes to the two standard streams, for harnesses that compare it.

#include <cstdio>
#include <iostream>

#include "fuzz.h"

struct messages {
    std::string out;
    std::string err;
};

/// What was written since the last call. The first call turns both streams into memory for good.
inline messages take_messages() {
    static memory_file out, err;
    static const bool turned = dup2(out.fd(), STDOUT_FILENO) >= 0 && dup2(err.fd(), STDERR_FILENO) >= 0;
    expect(turned, "the standard streams can be turned elsewhere");
    std::cout.flush();
    std::cerr.clear(); // a null text in a report has set its fail state
    std::fflush(stdout);
    return {out.take(), err.take()};
}

#endif
