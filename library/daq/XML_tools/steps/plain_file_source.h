#ifndef ZEB5_PLAIN_FILE_SOURCE_H
#define ZEB5_PLAIN_FILE_SOURCE_H

/// An input source for a file that is open already.

#include <xercesc/framework/LocalFileInputSource.hpp>

#include "steps/plain_file.h"

namespace zeb5 {

/// Reads from the descriptor, not from the path, which another file may have by now. Reports name the path as
/// the XML library does.
class plain_file_source final : public xercesc::LocalFileInputSource {
public:
    /// `file` must outlive the source and what reads from it; `memory` is the parser's.
    plain_file_source(const char *path, const plain_file &file, xercesc::MemoryManager &memory);

    xercesc::BinInputStream *makeStream() const override;

private:
    const plain_file &file_;
};

} // namespace zeb5

#endif
