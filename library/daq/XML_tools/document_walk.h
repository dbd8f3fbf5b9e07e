#ifndef ZEB5_DOCUMENT_WALK_H
#define ZEB5_DOCUMENT_WALK_H

/// How every reader walks a document: start, look at the root, take steps, sum up.

#include "SAX_File_Parser.h"
#include "SAX_Memory_Parser.h"
#include "sax_step_handlers.h"

namespace zeb5 {

/// The two kinds of source. A reader's own variants derive from these and add what differs between them.
struct from_memory {
    using parser = SAX_Memory_Parser;
    static parser open(char *text) { return parser(text); }
    static int start(parser &p, char *) { return p.start(); }
};

struct from_file {
    using parser = SAX_File_Parser;
    static parser open(char *) { return parser(); }
    static int start(parser &p, char *path) { return p.start(path); }
};

/// Reads one document. `walk(parser, root)` gets the root's name, walks the rest and returns the reader's
/// status. The result is that status, or 1 when the document cannot be started, plus the parser's error
/// count; a null source and a platform that does not come up give 1 alone.
template <class Source, class Walk> int walk_document(char *source, Walk walk) {
    if (!source)
        return 1;
    auto parser = Source::open(source);
    if (!parser.init_ok())
        return 1;
    int status = 1;
    if (Source::start(parser, source) == 0 && sax_step_handlers::next(parser) == 0) {
        const std::string_view root = sax_step_handlers::current(parser).tag;
        status = walk(parser, root.data() ? root : "");
    }
    return status + parser.get_error_counter();
}

/// Calls `act(step)` for every step that delivers a tag, up to the end or the first error.
template <class Parser, class Act> void for_each_tag(Parser &parser, Act act) {
    while (sax_step_handlers::next(parser) == 0)
        if (const sax_step step = sax_step_handlers::current(parser); step.tag.data())
            act(step);
}

} // namespace zeb5

#endif
