#ifndef ZEB5_PARSER_FILES_H
#define ZEB5_PARSER_FILES_H

/// The files that an XML parser has open.

#include <memory>

#include <xercesc/framework/MemoryManager.hpp>
#include <xercesc/sax/InputSource.hpp>

namespace zeb5 {

class file_stream;

/// Files of one parser, opened through source_of(); all of them are closed at the latest when this ends. When
/// memory runs out the parser by itself loses the stream that it has just opened, and the descriptor with it.
class parser_files {
public:
    /// `memory` must outlive this.
    explicit parser_files(xercesc::MemoryManager &memory) : memory_(memory) {}
    ~parser_files();
    parser_files(const parser_files &) = delete;
    parser_files &operator=(const parser_files &) = delete;

    /// The source that the XML library itself would make of a path; null for a path that it takes for an
    /// address or cannot use: it is given the path then, and says so itself.
    std::unique_ptr<xercesc::InputSource> source_of(const char *path);

private:
    friend file_stream;

    xercesc::MemoryManager &memory_;
    file_stream *open_ = nullptr; // the last one opened
};

} // namespace zeb5

#endif
