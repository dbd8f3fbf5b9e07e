#ifndef ZEB5_PARSER_STREAMS_H
#define ZEB5_PARSER_STREAMS_H

/// The streams that an XML parser reads.

#include <memory>

#include <xercesc/framework/MemoryManager.hpp>
#include <xercesc/sax/InputSource.hpp>

#include "limits/parse_meter.h"

namespace zeb5 {

class metered_source;
class metered_stream;

/// Streams of one parser, made by a metered_source; all of them end at the latest when this ends. When memory
/// runs out the parser by itself loses the stream that it has just opened, and the descriptor with it.
class parser_streams {
public:
    /// Both must outlive this.
    parser_streams(parse_meter &meter, xercesc::MemoryManager &memory) : meter_(meter), memory_(memory) {}
    ~parser_streams();
    parser_streams(const parser_streams &) = delete;
    parser_streams &operator=(const parser_streams &) = delete;

    /// Returns an input source for `path`, as the XML library itself makes it: a path that looks like an
    /// address is one. Null if it cannot be used: pass such a path to the XML library, which reports the
    /// problem.
    std::unique_ptr<xercesc::InputSource> source_of(const char *path);

private:
    friend metered_source;
    friend metered_stream;

    parse_meter &meter_;
    xercesc::MemoryManager &memory_;
    metered_stream *open_ = nullptr; // the last one opened
};

/// Another source, whose streams are a parser's, and of which its meter learns how long they are.
class metered_source final : public xercesc::InputSource {
public:
    /// Both must outlive this.
    metered_source(const xercesc::InputSource &source, parser_streams &streams);

    xercesc::BinInputStream *makeStream() const override;

private:
    const xercesc::InputSource &source_;
    parser_streams &streams_;
};

} // namespace zeb5

#endif
