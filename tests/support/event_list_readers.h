#ifndef EVENT_LIST_READERS_H
#define EVENT_LIST_READERS_H

/// The two readers of event lists, so that one document goes through both.

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/event_list_records.h"
#include "support/reader_forms.h"

/// Reads `document` into `list`.
inline read_outcome read_document(reader_form form, const std::string &document,
                                  std::vector<zeb5_ev_entry *> *list) {
    return read_either(
        form, document, [&](char *text) { return zeb5_parse_ev_list_read(text, list); },
        [&](char *path) { return zeb5_parse_ev_list_readf(path, list); });
}

/// Expects both readers to read these entries from a document, without any message.
inline void expect_entries(const std::string &document, const std::string &expected) {
    for (reader_form form : both_readers) {
        event_list list;
        const read_outcome seen = read_document(form, document, &list.entries);
        EXPECT_EQ(seen.result, 0) << reader_name(form) << ": " << document;
        EXPECT_EQ(seen.out + seen.err, "") << reader_name(form) << ": " << document;
        EXPECT_EQ(describe(list.entries), expected) << reader_name(form) << ": " << document;
    }
}

#endif
