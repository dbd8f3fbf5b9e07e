#include "findings.h"

#include "field_limits.h"
#include "split_values.h"
#include "standard_streams.h"

namespace {

std::string told(const document &source, const split_value &value) {
    return source.name + ": line " + std::to_string(value.line) + ": the text of " + value.element +
           " comes in " + std::to_string(value.pieces) + " pieces (" + value.causes +
           "): a reader keeps only one of them\n";
}

std::string told(const document &source, const cut_value &value) {
    return source.name + ": the text of " + value.element + " is " + std::to_string(value.length) +
           " bytes long, cut at " + std::to_string(value.limit) + value.where + ": '" + value.beginning +
           "...'\n";
}

} // namespace

findings find_missed_values(const document &source, const document_kind &kind) {
    findings all;
    if (!kind.root) // the camera reader takes all text nodes and has no fields of fixed size
        return all;
    if (const std::string text = source.text(); !has_nul(text))
        for (const split_value &value : find_split_values(text))
            all.split.push_back({told(source, value), 0});
    held_output({1, 2}, [&] { // what the parser reports is shown by who reads the records
        for (const cut_value &value : find_cut_values(source, kind.root))
            all.cut.push_back({told(source, value), value.limit});
    });
    return all;
}

std::string lines_of(const std::vector<missed_value> &values) {
    std::string lines;
    for (const missed_value &value : values)
        lines += value.line;
    return lines;
}
