#include "files/parser_reports.h"

#include <algorithm>
#include <cstdlib>

#include "SAX_File_Parser.h"
#include "files/standard_streams.h"

namespace {

/// Reads a number behind `mark` and goes behind it; 0 when the mark is not there.
std::size_t number_behind(const std::string &text, const char *mark, std::size_t &at) {
    const std::size_t found = text.find(mark, at);
    if (found == text.npos)
        return 0;
    at = found + std::string(mark).size();
    return std::strtoul(text.c_str() + at, nullptr, 10);
}

/// Finds the first line of the form "KIND at (file PATH, line N, char N): MESSAGE".
std::optional<parser_report> report_in(const std::string &said, const std::string &path) {
    const std::string mark = " at (file " + path + ", line ";
    std::size_t at = 0;
    const std::size_t line = number_behind(said, mark.c_str(), at);
    const std::size_t column = number_behind(said, ", char ", at);
    const std::size_t from = said.find("): ", at);
    if (line == 0 || column == 0 || from == said.npos)
        return std::nullopt;
    return parser_report{{line, column}, said.substr(from + 3, said.find('\n', from) - from - 3)};
}

/// What the parser throws is reported without a place, in the last line.
std::string last_line(const std::string &said) {
    const std::size_t end = said.find_last_not_of(" \n");
    if (end == said.npos)
        return "the parser could not be started";
    const std::size_t from = said.find_last_of('\n', end);
    return said.substr(from + 1, end - from);
}

} // namespace

std::optional<parser_report> first_report(std::string path) {
    int last = 0;
    const std::string said = held_output({1, 2}, [&] {
        SAX_File_Parser parser;
        last = parser.start(path.data());
        while (last == 0)
            last = parser.parse(nullptr, nullptr);
    });
    if (last == -1)
        return std::nullopt;
    if (const auto report = report_in(said, path))
        return report;
    return parser_report{{}, last_line(said)};
}
