#ifndef ZEB5XML_STARTED_PARSER_H
#define ZEB5XML_STARTED_PARSER_H

#include <utility>

#include "SAX_File_Parser.h"
#include "SAX_Memory_Parser.h"
#include "document.h"

/// Starts the parser that can read the document and returns the result of `action(parser)`; an empty result
/// when the parser cannot be started. `action` takes either parser and returns the same type for both.
template <class Action> auto with_started_parser(document &source, Action &&action) {
    using result = decltype(action(std::declval<SAX_Memory_Parser &>()));
    if (source.has_nul()) {
        SAX_File_Parser parser;
        return parser.start(source.path.data()) == 0 ? action(parser) : result();
    }
    SAX_Memory_Parser parser(source.text.data());
    return parser.start() == 0 ? action(parser) : result();
}

#endif
