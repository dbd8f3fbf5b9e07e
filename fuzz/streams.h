#ifndef FUZZ_STREAMS_H
#define FUZZ_STREAMS_H

/// What the library writes to the two standard streams, for harnesses that compare it.

#include "fuzz.h"
#include "support/capture.h"

/// What was written since the last call. The first call turns both streams into memory for good.
inline captured take_messages() {
    static memory_file out, err;
    static const turned_streams turned(out.fd(), err.fd());
    flush_streams();
    std::cerr.clear(); // a null text in a report has set its fail state
    return {out.take(), err.take()};
}

#endif
