#include "command_line/subcommand.h"

#include <algorithm>
#include <cstring>

#include "files/failure.h"

bool is_option(const argument &row) { return row.names[0] == '-'; }

bool is_flag(const argument &row) { return std::holds_alternative<bool *>(row.target); }

bool takes_file(const argument &row) {
    return !is_flag(row) && row.words.empty() && strcmp(value_name(row), "FILE") == 0;
}

const char *value_name(const argument &row) {
    if (!row.words.empty())
        return "WORD";
    return row.value ? row.value : is_option(row) ? "TEXT" : "FILE";
}

std::vector<std::string> names_apart(const argument &row) {
    const std::string all = row.names;
    std::vector<std::string> names;
    for (size_t at = 0; at < all.size();) {
        const size_t end = std::min(all.find(',', at), all.size());
        names.push_back(all.substr(at, end - at));
        at = end + 1;
    }
    return names;
}

const status_texts all_statuses = {
    std::string(lost_value_status) +
        ";\n     `select` knows no channel of the name, `diff` found a difference, "
        "`check` an error or a warning",
    "done", "wrong command line; `diff` or `check` could not read a document"};

std::vector<std::string> status_lines(const status_texts &texts) {
    const std::pair<exit_status, const std::string &> all[] = {{STATUS_DONE, texts.done},
                                                               {STATUS_DOCUMENT, texts.document},
                                                               {STATUS_USAGE, texts.usage},
                                                               {STATUS_OUTPUT, texts.output}};
    std::vector<std::string> lines;
    for (const auto &[status, text] : all)
        if (!text.empty())
            lines.push_back(std::to_string(status) + "  " + text);
    return lines;
}

std::string status_help(const status_texts &texts) {
    std::string help = "Exit status:\n";
    for (const std::string &line : status_lines(texts))
        help += "  " + line + "\n";
    return help + pipe_help;
}
