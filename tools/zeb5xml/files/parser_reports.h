#ifndef ZEB5XML_PARSER_REPORTS_H
#define ZEB5XML_PARSER_REPORTS_H

#include <optional>
#include <string>

#include "words/text_places.h"

/// The report with which the parser stops reading.
struct parser_report {
    text_place place;
    std::string message;
};

/// Reads a whole file with the pull reader. Returns its first report; none when there is nothing to report.
std::optional<parser_report> first_report(std::string path);

#endif
