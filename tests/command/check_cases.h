#ifndef CHECK_CASES_H
#define CHECK_CASES_H

/// Documents that break a rule of `check`, and documents that nearly do.

#include <string>
#include <vector>

#include "check/check_rules.h"

struct checked_case {
    rule id; // that it is about
    std::string document;
    std::string findings; // all of them; empty: nothing is found
};

std::vector<checked_case> structure_cases();
std::vector<checked_case> value_cases();

// Documents in which nothing is found but what the content brings

inline std::string channels(const std::string &content) {
    return "<CHANDESCRIPTIONS>" + content + "</CHANDESCRIPTIONS>";
}
inline std::string channel(const std::string &content) {
    return channels("<CHANNEL><PROP>P</PROP><NAME>N</NAME>" + content + "</CHANNEL>");
}
inline std::string bits_channel(const std::string &content) {
    return "<DAQvariables><DaqBits><orvin>P</orvin><daqName>N</daqName>" + content +
           "</DaqBits></DAQvariables>";
}
inline std::string matrix_channel(const std::string &content) {
    return "<DAQvariables><DaqFloatMatrix><orvin>P</orvin><daqName>N</daqName>" + content +
           "</DaqFloatMatrix></DAQvariables>";
}
inline std::string event(const std::string &content) {
    return "<BMR><EVENT><TYPE>4</TYPE>" + content + "</EVENT></BMR>";
}
inline std::string entry(const std::string &content) {
    return "<ENVINDEXDICT><CHANNEL><INDEX>1</INDEX><PROP>P</PROP>" + content + "</CHANNEL></ENVINDEXDICT>";
}
inline std::string camera(const std::string &content) { return "<Camera>" + content + "</Camera>"; }

inline const std::string fifteen(15, 'u'), sixteen(16, 'u'), many(256, 'p');

#endif
