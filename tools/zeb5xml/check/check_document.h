#ifndef ZEB5XML_CHECK_DOCUMENT_H
#define ZEB5XML_CHECK_DOCUMENT_H

#include <string>
#include <vector>

#include "check/check_rules.h"
#include "words/text_places.h"

/// A finding as it is told.
struct placed_finding {
    text_place place;
    rule id;
    std::string message;
    std::size_t kept = finding::none; // bytes of a field that is cut
    bool loses = false;               // readers drop what stands there, as finding::loses says
};

/// Checks the bytes of a document. The findings come in the order of the document.
std::vector<placed_finding> check_document(const std::string &bytes);

#endif
