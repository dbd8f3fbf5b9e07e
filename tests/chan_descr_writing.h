#ifndef CHAN_DESCR_WRITING_H
#define CHAN_DESCR_WRITING_H

/// Calls of dump_chan_desr() for tests, and the parts that all its documents have in common.

#include <algorithm>
#include <cctype>
#include <ctime>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "capture.h"
#include "channel_records.h"
#include "parse_chan_descr.h"
#include "test_files.h"

inline constexpr int full_table = 1, xml_document = 2, summary_table = 3; // values of `mode`
inline constexpr int chandescriptions = 0, daqvariables = 1;              // values of `format`

inline const std::string xml_declaration = "<?xml version=\"1.0\" encoding=\"ISO-8859-1\" ?>\n";

/// The whole document of a CHANDESCRIPTIONS list whose channels are `body`; no date line.
inline std::string chandescriptions_document(const std::string &body) {
    return xml_declaration + "<CHANDESCRIPTIONS>\n" + body + "</CHANDESCRIPTIONS>\n\n";
}

inline std::string daqvariables_document(const std::string &body) {
    return xml_declaration + "<DAQvariables>\n" + body + "</DAQvariables>\n\n";
}

/// What one call did: its result and what it wrote to the standard streams.
struct dump_outcome {
    int result;
    captured streams;
};

/// One call of the writer with its standard streams caught.
inline dump_outcome dump(std::vector<chan_descr_2010 *> *list, const std::string *file, int mode, int format,
                         int fd, std::string *sout, std::vector<dim_params *> *dims = nullptr) {
    std::string path = file ? *file : "";
    dump_outcome outcome{-1000, {}};
    outcome.streams = capture([&] {
        outcome.result = dump_chan_desr(list, file ? path.data() : nullptr, mode, format, fd, sout, dims);
    });
    return outcome;
}

/// The document as it is handed to a string; nothing may go anywhere else.
inline std::string xml_of(std::vector<chan_descr_2010 *> *list, int format,
                          std::vector<dim_params *> *dims = nullptr) {
    std::string text;
    const dump_outcome seen = dump(list, nullptr, xml_document, format, -1, &text, dims);
    EXPECT_EQ(seen.result, 0);
    EXPECT_EQ(seen.streams.out, "");
    EXPECT_EQ(seen.streams.err, "");
    return text;
}

/// Now as the date line shows it.
inline std::string local_date() {
    const time_t now = time(nullptr);
    tm parts{};
    localtime_r(&now, &parts);
    char text[40];
    strftime(text, sizeof(text), "%FT%T", &parts);
    return text;
}

/// Takes the date line out of a CHANDESCRIPTIONS document that was written since `since`, after checking that
/// it stands right below the root's start tag and tells the local time.
inline std::string without_date_line(const std::string &document, const std::string &since) {
    const std::string before = xml_declaration + "<CHANDESCRIPTIONS>\n";
    const std::string form = "\t<isodate>9999-99-99T99:99:99</isodate>\n"; // a 9 is any digit
    std::string line = document.substr(std::min(before.size(), document.size()), form.size());
    const std::string date = line.substr(std::min<size_t>(10, line.size()), 19);
    for (char &c : line)
        if (isdigit(static_cast<unsigned char>(c)))
            c = '9';
    if (document.compare(0, before.size(), before) != 0 || line != form) {
        ADD_FAILURE() << "no date line below the root's start tag: " << document.substr(0, 200);
        return document;
    }
    EXPECT_LE(since, date);
    EXPECT_LE(date, local_date());
    return before + document.substr(before.size() + form.size());
}

/// The listing that stands in for a destination.
inline std::string listing_of(const std::vector<chan_descr_2010 *> &list) {
    return capture([&] { print_zeb5_chan_descr(&list); }).out;
}

#endif
