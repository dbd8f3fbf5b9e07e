#include "values/json_text.h"

#include <charconv>
#include <cmath>

#include "values/field_names.h"

namespace {

/// "name":content, with a comma in front unless it is the first.
void add_member(std::string &object, const std::string &name, const std::string &content) {
    if (object.back() != '{')
        object += ',';
    object.append("\"").append(name).append("\":").append(content);
}

/// A list of what `text_of` makes of each item.
template <class Items, class TextOf> std::string list_of(const Items &items, TextOf text_of) {
    std::string list = "[";
    for (const auto &item : items)
        list.append(list.size() > 1 ? "," : "").append(text_of(item));
    return list + "]";
}

std::string quoted(const std::string &text) { return json_text(text); }

std::string value_text(const value &one, const field_row &row, text_encoding encoding);

/// `encoding_at(i)` returns the encoding of a field.
template <class EncodingAt>
void add_fields(std::string &object, const record &fields, const record_type &type, EncodingAt encoding_at) {
    for (size_t i = 0; i < type.rows.size(); ++i) {
        const field_row &row = type.rows[i];
        add_member(object, row.name, value_text(fields.fields[i], row, encoding_at(i)));
        if (!has_names(row))
            continue;
        const texts names = names_of(row, fields.fields[i]);
        add_member(object, name_of_names(row),
                   is_mask(row) ? list_of(names, quoted) : json_text(names.front()));
    }
}

std::string value_text(const value &one, const field_row &row, text_encoding encoding) {
    switch (row.kind) {
    case REAL: {
        const float number = std::get<real>(one.content).number;
        const std::string text = decimal_text(number);
        return std::isfinite(number) ? text : json_text(text); // JSON has no such numbers
    }
    case TEXT:
        return json_text(one.text(), encoding);
    case TEXTS:
        return list_of(std::get<texts>(one.content),
                       [&](const std::string &text) { return json_text(text, encoding); });
    case PARTS:
        return list_of(one.parts(), [&](const record &part) {
            std::string object = "{";
            add_fields(object, part, *row.part, [&](size_t) { return encoding; });
            return object + "}";
        });
    default:
        return std::to_string(one.number());
    }
}

} // namespace

std::string decimal_text(float number) {
    char text[32];
    return std::string(text, std::to_chars(text, text + sizeof text, number).ptr);
}

std::string json_text(const std::string &text, text_encoding encoding) {
    static const char digits[] = "0123456789abcdef";
    std::string quoted = "\"";
    for (const char c : utf8_text(text, encoding)) {
        if (c == '"' || c == '\\')
            quoted.append("\\") += c;
        else if (c == '\n')
            quoted += "\\n";
        else if (c == '\t')
            quoted += "\\t";
        else if (c == '\r')
            quoted += "\\r";
        else if (static_cast<unsigned char>(c) < ' ' || c == 0x7f)
            quoted.append("\\u00").append({digits[c >> 4], digits[c & 15]});
        else
            quoted += c;
    }
    return quoted + '"';
}

std::string json_text(const value &one, const field_row &row) {
    return value_text(one, row, encoding_of(one));
}

std::string json_text(const record &fields, const record_type &type, const std::string &source) {
    std::string object = "{";
    if (!source.empty())
        add_member(object, "source", json_text(source, is_utf8(source) ? UTF_8 : LATIN_1));
    add_member(object, "kind", json_text(type.name));
    add_fields(object, fields, type, [&](size_t i) { return encoding_of(fields.fields[i]); });
    if (const texts names = latin_1_fields(fields, type); !names.empty())
        add_member(object, LATIN_1_FIELDS, list_of(names, quoted));
    return object + "}";
}
