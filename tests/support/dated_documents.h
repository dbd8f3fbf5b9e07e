#ifndef DATED_DOCUMENTS_H
#define DATED_DOCUMENTS_H

/// What the documents of all writers have in common: the XML declaration and the date line.

#include <algorithm>
#include <cctype>
#include <ctime>
#include <string>

#include <gtest/gtest.h>

inline const std::string xml_declaration = "<?xml version=\"1.0\" encoding=\"ISO-8859-1\" ?>\n";

/// Now as the date line shows it.
inline std::string local_date() {
    const time_t now = time(nullptr);
    tm parts{};
    localtime_r(&now, &parts);
    char text[40];
    strftime(text, sizeof(text), "%FT%T", &parts);
    return text;
}

/// Takes the date line out of a document that was written since `since`, after checking that it stands right
/// below the start tag of `root` and tells the local time.
inline std::string without_date_line(const std::string &document, const std::string &root,
                                     const std::string &since) {
    const std::string before = xml_declaration + '<' + root + ">\n";
    const std::string form = "\t<isodate>9999-99-99T99:99:99</isodate>\n"; // a 9 is any digit
    std::string line = document.substr(std::min(before.size(), document.size()), form.size());
    const std::string date = line.substr(std::min<std::size_t>(10, line.size()), 19);
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

#endif
