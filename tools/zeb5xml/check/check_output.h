#ifndef ZEB5XML_CHECK_OUTPUT_H
#define ZEB5XML_CHECK_OUTPUT_H

#include <string>
#include <vector>

#include "check/check_document.h"
#include "command_line/colour.h"

/// What was found in one file.
struct checked_file {
    std::string name;
    std::vector<placed_finding> findings;
};

/// One line for each finding: FILE:LINE:COL: error|warning|note: MESSAGE [RULE]
std::string as_text(const checked_file &file, const painter &paint);

/// An array of objects, for programs.
std::string as_json(const std::vector<checked_file> &files);

/// One command line of a workflow for each finding.
std::string as_github(const checked_file &file);

#endif
