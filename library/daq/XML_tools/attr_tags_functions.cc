#include "attr_tags_functions.h"

namespace {

void append_tag(std::string &a, const char *before, const char *b, const char *after) {
    a += before;
    a += b;
    a += after;
}

void append_tag_with_attributes(std::string &a, const char *b, const std::vector<char *> &at,
                                const std::vector<char *> &v, const char *after) {
    append_tag(a, "<", b, " ");
    for (std::size_t i = 0; i < at.size(); ++i) {
        if (i > 0)
            a += ' ';
        append_tag(a, "", at.at(i), "=\"");
        append_tag(a, "", v.at(i), "\"");
    }
    a += after;
}

} // namespace

void START_TAG(std::string &a, const char *b) { append_tag(a, "<", b, ">"); }

void START_TAGN(std::string &a, const char *b) { append_tag(a, "<", b, ">\n"); }

void END_TAG(std::string &a, const char *b) { append_tag(a, "</", b, ">"); }

void END_TAGN(std::string &a, const char *b) { append_tag(a, "</", b, ">\n"); }

void START_TAG_ATTR(std::string &a, const char *b, std::vector<char *> *at, std::vector<char *> *v) {
    append_tag_with_attributes(a, b, *at, *v, "/>");
}

void START_TAG_ATTRN(std::string &a, const char *b, std::vector<char *> *at, std::vector<char *> *v) {
    append_tag_with_attributes(a, b, *at, *v, "/>\n");
}

void START_TAG_ATTRNS(std::string &a, const char *b, std::vector<char *> *at, std::vector<char *> *v) {
    append_tag_with_attributes(a, b, *at, *v, ">");
}

void START_TAG_ATTRNNS(std::string &a, const char *b, std::vector<char *> *at, std::vector<char *> *v) {
    append_tag_with_attributes(a, b, *at, *v, ">\n");
}
