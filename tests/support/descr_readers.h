#ifndef DESCR_READERS_H
#define DESCR_READERS_H

/// The two readers of channel descriptions, so that one table of rows goes through both.

#include <string>

#include <gtest/gtest.h>

#include "support/channel_records.h"
#include "support/reader_forms.h"

struct read_options {
    bool shift = false;
    bool delete_duplicated = false;
};

/// Reads `document` into `list`.
inline read_outcome read_document(reader_form form, const std::string &document,
                                  std::vector<chan_descr_2010 *> *list, read_options options = {}) {
    return read_either(
        form, document,
        [&](char *text) {
            return parse_descr_list_read(text, list, options.shift, options.delete_duplicated);
        },
        [&](char *path) {
            return parse_descr_list_readf(path, list, options.shift, options.delete_duplicated);
        });
}

/// The beginning of a document, for messages.
inline std::string excerpt(const std::string &document) {
    return document.size() <= 400 ? document : document.substr(0, 400) + "...";
}

/// Reads a document that must be read without any message, and describes the whole list.
inline std::string read_well(reader_form form, const std::string &document, channel_list &list,
                             read_options options = {}) {
    const read_outcome seen = read_document(form, document, list, options);
    EXPECT_EQ(seen.result, 0) << reader_name(form) << ": " << excerpt(document);
    EXPECT_EQ(seen.out, "") << reader_name(form) << ": " << excerpt(document);
    EXPECT_EQ(seen.err, "") << reader_name(form) << ": " << excerpt(document);
    return describe(list.records);
}

#endif
