#ifndef ZEB5XML_EACH_FILE_H
#define ZEB5XML_EACH_FILE_H

#include <algorithm>
#include <string>
#include <vector>

#include "files/failure.h"
#include "files/standard_streams.h"

/// Calls `work` for every file. A file that fails is reported, and the others follow. `work` returns an exit
/// status; the result is the worst of all. A failure of the output ends the loop.
template <class Work> int each_file(const std::vector<std::string> &files, Work &&work) {
    int status = STATUS_DONE;
    for (const std::string &path : files) {
        try {
            status = std::max(status, int{work(path)});
        } catch (const failure &problem) {
            if (problem.status() != STATUS_DOCUMENT)
                throw;
            tell(problem.what());
            status = STATUS_DOCUMENT;
        }
    }
    return status;
}

#endif
