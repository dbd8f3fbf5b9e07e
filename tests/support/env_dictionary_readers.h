#ifndef ENV_DICTIONARY_READERS_H
#define ENV_DICTIONARY_READERS_H

/// The readers of env index dictionaries, so that one document goes through all of them.

#include <string>

#include <gtest/gtest.h>

#include "support/env_dictionary_records.h"
#include "support/reader_forms.h"

using both_layouts = testing::Types<classic_layout, layout_2010>;

/// Reads `document` into `list`.
template <class Layout>
read_outcome read_dictionary(reader_form form, const std::string &document, typename Layout::list *list) {
    return read_either(
        form, document, [&](char *text) { return Layout::read_memory(text, list); },
        [&](char *path) { return Layout::read_file(path, list); });
}

/// Expects both readers to read these entries from a document, without any message.
template <class Layout> void expect_entries(const std::string &document, const std::string &expected) {
    for (reader_form form : both_readers) {
        dictionary<Layout> list;
        const read_outcome seen = read_dictionary<Layout>(form, document, &list.entries);
        EXPECT_EQ(seen.result, 0) << reader_name(form) << ": " << document;
        EXPECT_EQ(seen.out + seen.err, "") << reader_name(form) << ": " << document;
        EXPECT_EQ(describe(list.entries), expected) << reader_name(form) << ": " << document;
    }
}

#endif
