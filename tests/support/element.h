#ifndef ELEMENT_H
#define ELEMENT_H

/// Elements of documents, as text.

#include <string>

inline std::string element(const std::string &tag, const std::string &text) {
    return '<' + tag + '>' + text + "</" + tag + '>';
}

/// The same on a line of its own.
inline std::string element_line(const std::string &tag, const std::string &text) {
    return element(tag, text) + '\n';
}

#endif
