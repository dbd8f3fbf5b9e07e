#ifndef READER_FORMS_H
#define READER_FORMS_H

/// Readers come in two forms, for memory and for files: one call for both, so that one table of rows goes
/// through both.

#include <string>
#include <vector>

#include "support/capture.h"
#include "support/test_files.h"

enum reader_form { READ_MEMORY = 0, READ_FILE = 1 };
const reader_form both_readers[] = {READ_MEMORY, READ_FILE};

inline const char *reader_name(reader_form form) {
    return form == READ_MEMORY ? "memory reader" : "file reader";
}

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

/// Reads `document` with `memory`, which is given the text, or with `file`, which is given a path.
template <class Memory, class File>
read_outcome read_either(reader_form form, const std::string &document, Memory memory, File file) {
    read_outcome seen = {};
    std::string name = "my_mem_info";
    captured streams;
    if (form == READ_MEMORY) {
        // exactly as long as the text and its NUL, so that reading past them shows
        std::vector<char> text(document.c_str(), document.c_str() + document.size() + 1);
        streams = capture([&] { seen.result = memory(text.data()); });
    } else {
        temporary_file source(document);
        name = source.path();
        streams = capture([&] { seen.result = file(source.c_path()); });
    }
    seen.out = streams.out;
    seen.err = replace_all(streams.err, name, "DOCUMENT");
    return seen;
}

#endif
