#ifndef DESCR_READERS_H
#define DESCR_READERS_H

/// The two readers of channel descriptions, so that one table of rows goes through both.

#include <string>

#include <gtest/gtest.h>

#include "capture.h"
#include "channel_records.h"
#include "test_files.h"

enum reader_form { READ_MEMORY = 0, READ_FILE = 1 };
const reader_form both_readers[] = {READ_MEMORY, READ_FILE};

struct read_options {
    bool shift = false;
    bool delete_duplicated = false;
};

struct read_outcome {
    int result;
    std::string out;
    std::string err; // with DOCUMENT for the name of the document
};

inline std::string replace_all(std::string text, const std::string &what, const std::string &with) {
    for (size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += with.size())
        text.replace(at, what.size(), with);
    return text;
}

/// Reads `document` into `list`.
inline read_outcome read_document(reader_form form, const std::string &document,
                                  std::vector<chan_descr_2010 *> *list, read_options options = {}) {
    read_outcome seen = {};
    std::string text = document, name = "my_mem_info";
    captured streams;
    if (form == READ_MEMORY) {
        streams = capture([&] {
            seen.result = parse_descr_list_read(text.data(), list, options.shift, options.delete_duplicated);
        });
    } else {
        temporary_file file(document);
        name = file.path();
        streams = capture([&] {
            seen.result =
                parse_descr_list_readf(file.c_path(), list, options.shift, options.delete_duplicated);
        });
    }
    seen.out = streams.out;
    seen.err = replace_all(streams.err, name, "DOCUMENT");
    return seen;
}

inline const char *reader_name(reader_form form) {
    return form == READ_MEMORY ? "memory reader" : "file reader";
}

/// The beginning of a document, for messages.
inline std::string excerpt(const std::string &document) {
    return document.size() <= 400 ? document : document.substr(0, 400) + "...";
}

/// Reads a document that must be read without a word, and describes the whole list.
inline std::string read_well(reader_form form, const std::string &document, channel_list &list,
                             read_options options = {}) {
    const read_outcome seen = read_document(form, document, list, options);
    EXPECT_EQ(seen.result, 0) << reader_name(form) << ": " << excerpt(document);
    EXPECT_EQ(seen.out, "") << reader_name(form) << ": " << excerpt(document);
    EXPECT_EQ(seen.err, "") << reader_name(form) << ": " << excerpt(document);
    return describe(list.records);
}

#endif
