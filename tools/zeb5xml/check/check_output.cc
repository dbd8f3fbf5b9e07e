#include "check/check_output.h"

#include <cstdio>

#include "values/json_text.h"

namespace {

std::string place_of(const placed_finding &one) {
    return std::to_string(one.place.line) + ":" + std::to_string(one.place.column);
}

colour colour_of(severity level) {
    switch (level) {
    case severity::NOTE:
        return BOLD;
    case severity::WARNING:
        return YELLOW;
    case severity::FAULT:
        return RED;
    }
    return BOLD;
}

/// Replaces what ends a value of a workflow command; in `properties`, what separates them, too.
std::string workflow_text(const std::string &text, bool is_property) {
    std::string result;
    for (const char c : text) {
        const std::string_view special = is_property ? "%\r\n:," : "%\r\n";
        if (special.find(c) == special.npos) {
            result += c;
            continue;
        }
        char escaped[8];
        std::snprintf(escaped, sizeof escaped, "%%%02X", static_cast<unsigned>(c));
        result += escaped;
    }
    return result;
}

} // namespace

std::string as_text(const checked_file &file, const painter &paint) {
    std::string text;
    for (const placed_finding &one : file.findings)
        text.append(file.name)
            .append(":")
            .append(place_of(one))
            .append(": ")
            .append(paint(colour_of(row_of(one.id).level), name_of(row_of(one.id).level)))
            .append(": ")
            .append(one.message)
            .append(" [")
            .append(row_of(one.id).name)
            .append("]\n");
    return text;
}

std::string as_json(const std::vector<checked_file> &files) {
    std::string text = "[";
    for (const checked_file &file : files)
        for (const placed_finding &one : file.findings)
            text.append(text.size() == 1 ? "\n" : ",\n")
                .append("  {\"file\": ")
                .append(json_text(file.name))
                .append(", \"line\": ")
                .append(std::to_string(one.place.line))
                .append(", \"column\": ")
                .append(std::to_string(one.place.column))
                .append(", \"severity\": ")
                .append(json_text(name_of(row_of(one.id).level)))
                .append(", \"rule\": ")
                .append(json_text(row_of(one.id).name))
                .append(", \"message\": ")
                .append(json_text(one.message))
                .append("}");
    return text + "\n]\n";
}

std::string as_github(const checked_file &file) {
    std::string text;
    for (const placed_finding &one : file.findings) {
        const rule_row &row = row_of(one.id);
        text.append(row.level == severity::NOTE ? "::notice" : std::string("::") + name_of(row.level))
            .append(" file=")
            .append(workflow_text(file.name, true))
            .append(",line=")
            .append(std::to_string(one.place.line))
            .append(",col=")
            .append(std::to_string(one.place.column))
            .append(",title=")
            .append(row.name)
            .append("::")
            .append(workflow_text(one.message, false))
            .append("\n");
    }
    return text;
}
