#ifndef ENV_DICTIONARY_WRITING_H
#define ENV_DICTIONARY_WRITING_H

/// Calls of the env index dictionary writers for tests, and what their outputs have in common.

#include <climits>
#include <string>

#include <gtest/gtest.h>

#include "support/capture.h"
#include "support/chan_descr_writing.h"
#include "support/dated_documents.h"
#include "support/env_dictionary_readers.h"

enum { text_lines = 1, xml_to_file_and_fd = 2, xml_to_string = 3 }; // values of `mode`
const int all_dictionary_modes[] = {text_lines, xml_to_file_and_fd, xml_to_string, 0, 4, -1, INT_MAX,
                                    INT_MIN};

/// The whole document of the channels in `body`; no date line.
inline std::string dictionary_document(const std::string &body) {
    return xml_declaration + "<ENVINDEXDICT>\n" + body + "</ENVINDEXDICT>\n\n";
}

inline std::string dictionary_channel(const std::string &index, const std::string &prop,
                                      const std::string &abs, const std::string &rel) {
    return "<CHANNEL>\n<INDEX>" + index + "</INDEX>\n<PROP>" + prop + "</PROP>\n<DABS>" + abs +
           "</DABS>\n<DREL>" + rel + "</DREL>\n</CHANNEL>\n";
}

/// The document without its date line, as without_date_line() checks and takes it out.
inline std::string without_dictionary_date(const std::string &document, const std::string &since) {
    return without_date_line(document, "ENVINDEXDICT", since);
}

/// One call of the writer with its standard streams caught.
template <class Layout>
dump_outcome dump_dictionary(typename Layout::list *list, const std::string *file, int mode, int fd,
                             std::string *text) {
    std::string path = file ? *file : "";
    dump_outcome outcome{-1000, {}};
    outcome.streams =
        capture([&] { outcome.result = Layout::dump(list, file ? path.data() : nullptr, mode, fd, text); });
    return outcome;
}

/// The same for the conversion of a document.
template <class Layout>
dump_outcome convert_dictionary(const std::string &xml, const std::string *file, int mode, int fd) {
    std::string text = xml, path = file ? *file : "";
    dump_outcome outcome{-1000, {}};
    outcome.streams = capture(
        [&] { outcome.result = Layout::convert(text.data(), file ? path.data() : nullptr, mode, fd); });
    return outcome;
}

template <class Layout> std::string created_line(const std::string &file) {
    return std::string(Layout::function) + "  file: '" + file + "' has been created\n";
}

template <class Layout> std::string closed_line(const std::string &file) {
    return std::string(Layout::function) + "  file: '" + file + "' has been closed\n";
}

template <class Layout> std::string invalid_argument_line() {
    return std::string(Layout::function) + " invalid argument: '\n";
}

/// The document that is written to a string. No other destination may get anything.
template <class Layout> std::string dictionary_xml(typename Layout::list *list) {
    std::string text = "before";
    const dump_outcome seen = dump_dictionary<Layout>(list, nullptr, xml_to_string, -1, &text);
    EXPECT_EQ(seen.result, 0);
    EXPECT_EQ(seen.streams.out + seen.streams.err, "");
    return text;
}

#endif
