#include "values/value_text.h"

#include <cstdio>

#include "values/field_names.h"
#include "values/json_text.h"
#include "values/text_encoding.h"
#include "words/words.h"

std::string plain_text(const std::string &bytes) {
    const bool as_it_is = is_utf8(bytes);
    std::string text;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= ' ' && byte != 0x7f && (byte < 0x80 || as_it_is)) {
            text += c;
            continue;
        }
        char escaped[8];
        snprintf(escaped, sizeof escaped, "\\x%02x", byte);
        text += escaped;
    }
    return text;
}

std::string quoted_text(const std::string &bytes) {
    std::string quoted = "\"";
    for (const char c : plain_text(bytes))
        quoted.append(c == '"' ? "\\" : "") += c;
    return quoted + '"';
}

std::string value_text(const value &one, const field_row &row) {
    if (row.kind == TEXT)
        return quoted_text(one.text());
    if (!has_names(row))
        return json_text(one, row);
    std::string number = std::to_string(one.number());
    if (is_mask(row)) {
        char hexadecimal[24];
        snprintf(hexadecimal, sizeof hexadecimal, "0x%llx", static_cast<unsigned long long>(one.number()));
        number = hexadecimal;
    }
    const std::string names = joined(names_of(row, one), ":");
    return names.empty() ? number : number + " (" + names + ")";
}

std::string which_text(size_t which) { return which > 1 ? " (" + std::to_string(which) + ")" : ""; }

std::string identity_text(const value &identity, const field_row &row, size_t which) {
    const std::string name = row.kind == TEXT ? plain_text(identity.text())
                             : has_names(row)
                                 ? joined(names_of(row, identity), ":")
                                 : std::string(row.name) + " " + std::to_string(identity.number());
    return (name.empty() ? "''" : name) + which_text(which);
}
