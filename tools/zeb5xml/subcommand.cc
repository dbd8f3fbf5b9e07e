#include "subcommand.h"

#include <algorithm>
#include <cstring>

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

std::vector<subcommand> all_subcommands() {
    return {show_subcommand(),  export_subcommand(),    convert_subcommand(),    canonical_subcommand(),
            diff_subcommand(),  merge_subcommand(),     mask_subcommand(),       select_subcommand(),
            check_subcommand(), catalogue_subcommand(), completion_subcommand(), manual_subcommand()};
}
