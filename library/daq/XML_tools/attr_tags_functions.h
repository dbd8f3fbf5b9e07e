#ifndef ZEB5_ATTR_TAGS_FUNCTIONS_H
#define ZEB5_ATTR_TAGS_FUNCTIONS_H

/// Tag writers. Each appends one tag to the end of `a`; `b` is the element name. Nothing is escaped, indented
/// or checked. The suffix N writes a line end after the tag.
///
/// The ATTR forms write the attributes named in `at` with the values in `v`, index by index, as
/// ` name="value"`. The blank after the element name is written even when there is no attribute. `v` must be
/// at least as long as `at`: a missing value throws std::out_of_range after its name and `="` were appended.
/// The pointers and the vectors' entries must not be null. May be called from several threads at once, each
/// on a string of its own; names and values are only read.

#include <string>
#include <vector>

#include "zeb5_export.h"

ZEB5_API void START_TAG(std::string &a, const char *b);  // `<b>`
ZEB5_API void START_TAGN(std::string &a, const char *b); // `<b>` and a line end
ZEB5_API void END_TAG(std::string &a, const char *b);    // `</b>`
ZEB5_API void END_TAGN(std::string &a, const char *b);   // `</b>` and a line end

/// Empty element: `<b n="1"/>`
ZEB5_API void START_TAG_ATTR(std::string &a, const char *b, std::vector<char *> *at, std::vector<char *> *v);
/// Empty element and a line end
ZEB5_API void START_TAG_ATTRN(std::string &a, const char *b, std::vector<char *> *at, std::vector<char *> *v);
/// Start tag: `<b n="1">`
ZEB5_API void START_TAG_ATTRNS(std::string &a, const char *b, std::vector<char *> *at,
                               std::vector<char *> *v);
/// Start tag and a line end
ZEB5_API void START_TAG_ATTRNNS(std::string &a, const char *b, std::vector<char *> *at,
                                std::vector<char *> *v);

#endif
