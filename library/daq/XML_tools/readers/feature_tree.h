#ifndef ZEB5_FEATURE_TREE_H
#define ZEB5_FEATURE_TREE_H

/// Reads features from a document tree: dump_nodes() is implemented here. Also gives the texts of the tree's
/// own exceptions.

#include <optional>
#include <string>

#include <xercesc/dom/DOMException.hpp>

namespace zeb5 {

/// The XML library's text for the exception's code, where it has one.
std::optional<std::string> message_of(const xercesc::DOMException &problem);

} // namespace zeb5

#endif
