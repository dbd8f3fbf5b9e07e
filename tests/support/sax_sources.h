#ifndef SAX_SOURCES_H
#define SAX_SOURCES_H

/// The two pull readers behind one interface, so that one test runs both; and their steps as one line of
/// text.

#include <string>
#include <string_view>

#include "SAX_File_Parser.h"
#include "SAX_Memory_Parser.h"
#include "support/capture.h"
#include "support/reader_forms.h"
#include "support/test_files.h"

/// A document read from memory.
class memory_source {
public:
    explicit memory_source(std::string_view document) : document_(document), parser_(document_.data()) {}

    SAX_Memory_Parser &parser() { return parser_; }
    int start() { return parser_.start(); }
    std::string system_id() const { return "my_mem_info"; }

private:
    std::string document_;
    SAX_Memory_Parser parser_;
};

/// The same document read from a file.
class file_source {
public:
    explicit file_source(std::string_view document) : file_(document) {}

    SAX_File_Parser &parser() { return parser_; }
    int start() { return parser_.start(file_.c_path()); }
    std::string system_id() const { return file_.path(); }

private:
    temporary_file file_;
    SAX_File_Parser parser_;
};

/// One step: its result where that is not 0, "~" for two nulls, else the tag and, in brackets, the text.
template <class Parser> std::string step(Parser &parser) {
    char never_set = '?', *tag = &never_set, *value = &never_set;
    const int result = parser.parse(&tag, &value);
    if (result != 0)
        return std::to_string(result) + (tag ? " with a tag" : "") + (value ? " with a value" : "");
    std::string text = tag ? tag : "~";
    if (value)
        text += '[' + std::string(value) + ']';
    return text;
}

/// All steps of a document that was started, with the one that ends it.
template <class Parser> std::string steps(Parser &parser) {
    std::string all = step(parser);
    for (std::string last = all; !last.empty() && last != "-1" && !(last[0] >= '1' && last[0] <= '9');) {
        last = step(parser);
        all += ' ' + last;
    }
    return all;
}

/// Start, steps up to the first report and all reports.
struct outcome {
    int started = -1;
    std::string steps_seen;
    captured streams;
    int count = 0;
};

template <class Source> outcome read(Source &source) {
    outcome seen;
    seen.streams = capture([&] {
        seen.started = source.start();
        if (seen.started == 0)
            seen.steps_seen = steps(source.parser());
    });
    seen.count = source.parser().get_error_counter();
    return seen;
}

/// `text` with every "<FILE>" replaced by `name`.
inline std::string with_file(const std::string &text, const std::string &name) {
    return replace_all(text, "<FILE>", name);
}

#endif
