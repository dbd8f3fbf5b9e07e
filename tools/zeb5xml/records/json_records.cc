#include "records/json_records.h"

#include <cmath>

#include <nlohmann/json.hpp> // in as few files as possible, as it takes long to compile

#include "files/failure.h"
#include "records/json_objects.h"
#include "values/field_names.h"
#include "values/text_encoding.h"
#include "words/nearest.h"
#include "words/words.h"

namespace {

using nlohmann::json;

/// What is wrong with a record; where it stands is put in front.
[[noreturn]] void refuse(const std::string &where, const std::string &what) {
    throw failure(STATUS_DOCUMENT, where + ": " + what);
}

value number_from(const json &content, const field_row &row, const std::string &where) {
    const double number =
        content.is_number() ? content.get<double>() : NAN; // exact for what fits into a field
    if (!(number == std::floor(number)))
        refuse(where, "is no whole number");
    if (number < static_cast<double>(row.lowest) || number > static_cast<double>(row.highest))
        refuse(where, "is not in the range from " + std::to_string(row.lowest) + " to " +
                          std::to_string(row.highest));
    return {static_cast<std::int64_t>(number)};
}

value real_from(const json &content, const std::string &where) {
    if (content.is_number()) {
        const auto number = content.get<float>();
        if (std::isinf(number)) // no number of JSON is infinite
            refuse(where, "does not fit into a float");
        return {real{number}};
    }
    for (const char *text : {"inf", "-inf", "nan", "-nan"}) // as JSON has no numbers for them
        if (content == text)
            return {real{std::strtof(text, nullptr)}};
    refuse(where, "is no number");
}

std::string text_from(const json &content, size_t capacity, bool is_latin_1, const std::string &where) {
    if (!content.is_string())
        refuse(where, "is no text");
    std::string text = content.get<std::string>();
    if (is_latin_1) {
        const std::optional<std::string> bytes = latin_1_from_utf8(text);
        if (!bytes)
            refuse(where, "has a character that ISO-8859-1 has not");
        text = *bytes;
    }
    if (text.find('\0') != std::string::npos)
        refuse(where, "has a NUL character");
    if (capacity != 0 && text.size() > capacity)
        refuse(where, "is " + std::to_string(text.size()) + " bytes long; the field holds " +
                          std::to_string(capacity));
    return text;
}

record record_from(const json &object, const record_type &type, const texts &other_fields,
                   const std::string &where, bool is_latin_1);

const json &list_from(const json &content, const std::string &where) {
    if (!content.is_array())
        refuse(where, "is no list");
    return content;
}

value value_from(const json &content, const field_row &row, bool is_latin_1, const std::string &where) {
    if (row.kind == REAL)
        return real_from(content, where);
    if (row.kind == TEXT)
        return {text_from(content, row.capacity, is_latin_1, where)};
    if (row.kind == TEXTS) {
        texts all;
        for (const json &one : list_from(content, where))
            all.push_back(text_from(one, 0, is_latin_1, where));
        return {std::move(all)};
    }
    if (row.kind == PARTS) {
        std::vector<record> parts;
        for (const json &one : list_from(content, where))
            parts.push_back(record_from(one, *row.part, {}, where + "[" + std::to_string(parts.size()) + "]",
                                        is_latin_1));
        return {std::move(parts)};
    }
    return number_from(content, row, where);
}

/// Refuses a name that is of no field: it may be a field that is spelled wrong.
void require_known_names(const json &object, const record_type &type, texts known, const std::string &where) {
    for (const field_row &row : type.rows) {
        known.push_back(row.name);
        if (has_names(row))
            known.push_back(name_of_names(row));
    }
    for (const auto &[name, content] : object.items())
        if (std::find(known.begin(), known.end(), name) == known.end())
            refuse(where, "'" + name + "' is no field of a " + type.name + did_you_mean(name, known));
}

bool is_given(const json &object, const char *name) {
    const auto found = object.find(name);
    return found != object.end() && !found->is_null();
}

/// Names of the fields that were taken as ISO-8859-1.
texts latin_1_fields_of(const json &object, const std::string &where) {
    if (!is_given(object, LATIN_1_FIELDS))
        return {};
    texts names;
    for (const json &name : list_from(object[LATIN_1_FIELDS], where + ": " + LATIN_1_FIELDS))
        names.push_back(text_from(name, 0, false, where + ": " + LATIN_1_FIELDS));
    return names;
}

record record_from(const json &object, const record_type &type, const texts &other_fields,
                   const std::string &where, bool is_latin_1) {
    if (!object.is_object())
        refuse(where, "is no object");
    require_known_names(object, type, other_fields, where);
    if (!is_given(object, type.identity().name))
        refuse(where, std::string("has no ") + type.identity().name);
    const texts in_latin_1 = latin_1_fields_of(object, where);
    record fields = type.fresh(type);
    for (size_t i = 0; i < type.rows.size(); ++i) {
        const field_row &row = type.rows[i];
        const bool is_named = std::find(in_latin_1.begin(), in_latin_1.end(), row.name) != in_latin_1.end();
        if (is_given(object, row.name))
            fields.fields[i] =
                value_from(object[row.name], row, is_latin_1 || is_named, where + ": " + row.name);
    }
    return fields;
}

/// Returns the kind that the object names, or the only one that there is.
const record_kind &kind_of(const json &object, const std::vector<const record_kind *> &kinds,
                           const std::string &where) {
    texts names;
    for (const record_kind *kind : kinds) {
        names.push_back(kind->type->name);
        if (is_given(object, "kind") ? object["kind"] == kind->type->name : kinds.size() == 1)
            return *kind;
    }
    refuse(where, is_given(object, "kind") ? "its kind must be " + joined(names, " or ") + " here"
                                           : "has no kind: " + joined(names, " or "));
}

} // namespace

json_records read_json_records(const document &source, const std::vector<const record_kind *> &kinds,
                               const conversion &how) {
    json_records result;
    each_json_object(source, [&](const json &object, const std::string &where) {
        const record_kind &kind = kind_of(object, kinds, where);
        if (result.kind && result.kind != &kind)
            refuse(where, "is of another kind than the records before");
        if (!result.kind)
            result = {&kind, kind.make(how)};
        result.list->append(
            record_from(object, result.list->type(), {"source", "kind", LATIN_1_FIELDS}, where, false));
    });
    return result;
}
