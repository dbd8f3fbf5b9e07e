#ifndef ZEB5XML_STARTED_PARSER_H
#define ZEB5XML_STARTED_PARSER_H

#include <string>
#include <utility>

#include "SAX_File_Parser.h"
#include "files/document.h"

/// Starts a parser of the document and returns the result of `action(parser)`; an empty result when the
/// parser cannot be started.
template <class Action> auto with_started_parser(const document &source, Action &&action) {
    using result = decltype(action(std::declval<SAX_File_Parser &>()));
    SAX_File_Parser parser;
    std::string path = source.path;
    return parser.start(path.data()) == 0 ? action(parser) : result();
}

#endif
