#ifndef ZEB5_PLAIN_DECLARATION_H
#define ZEB5_PLAIN_DECLARATION_H

/// What a plain document may begin with: a byte order mark and an XML declaration.

#include "steps/plain_window.h"

namespace zeb5 {

struct plain_prologue {
    const char *end = nullptr; // behind the declaration; null: not plain
    plain_encoding encoding = plain_encoding::UTF_8;
};

/// Reads the first bytes of a document, none from `end` on.
plain_prologue read_declaration(const char *begin, const char *end);

} // namespace zeb5

#endif
