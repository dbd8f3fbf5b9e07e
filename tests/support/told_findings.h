#ifndef TOLD_FINDINGS_H
#define TOLD_FINDINGS_H

#include <string>

#include "check/check_document.h"

/// What `check` tells of a document, a line for each finding: "LINE:COLUMN RULE: MESSAGE".
inline std::string told(const std::string &document) {
    std::string text;
    for (const placed_finding &one : check_document(document))
        text += std::to_string(one.place.line) + ":" + std::to_string(one.place.column) + " " +
                row_of(one.id).name + ": " + one.message + "\n";
    return text;
}

#endif
