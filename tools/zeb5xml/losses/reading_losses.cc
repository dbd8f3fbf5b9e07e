#include "losses/reading_losses.h"

#include <algorithm>
#include <map>
#include <optional>

#include "check/check_document.h"
#include "losses/lost_fields.h"
#include "records/form_losses.h"
#include "records/record_order.h"
#include "values/field_names.h"
#include "values/type_names.h"
#include "values/value_text.h"

namespace {

/// Whether a text field of the record or of its parts holds this many bytes.
bool has_capacity(const record_type &type, size_t bytes) {
    return std::any_of(type.rows.begin(), type.rows.end(), [&](const field_row &row) {
        return row.part ? has_capacity(*row.part, bytes) : row.capacity == bytes;
    });
}

bool is_loss(const placed_finding &one, const record_type &type, const form &to) {
    switch (one.id) {
    case rule::CUT_FIELD:
        return has_capacity(type, one.kept); // not in another layout
    case rule::ENCODING_MISMATCH:
        return !to.is_document; // a document gets the same bytes under the same label
    case rule::UNKNOWN_ELEMENT:
    case rule::IGNORED_ATTRIBUTE:
    case rule::IGNORED_TEXT:
        return true;
    default:
        return one.loses || row_of(one.id).level == severity::FAULT;
    }
}

/// What a reader has made of the records of one identity.
struct made_records {
    std::vector<size_t> places;        // in its list
    std::optional<merged_record> last; // made once, when others were merged into it
};

std::string line(const std::string &place, const std::string &text) {
    return "zeb5xml: " + place + ": " + text + "\n";
}

} // namespace

std::string lost_in_reading(const document &source, const record_type &type, const form &to) {
    std::string lines;
    for (const placed_finding &one : check_document(source.text()))
        if (is_loss(one, type, to))
            lines += line(source.name + ":" + std::to_string(one.place.line) + ":" +
                              std::to_string(one.place.column),
                          one.message + " [" + row_of(one.id).name + "]");
    return lines;
}

std::string lost_in_merging(const document &source, const record_list &all, const record_list &merged,
                            const form &to) {
    if (all.size() == merged.size())
        return "";
    const record_type &type = all.type();
    std::map<record_key, made_records> made_of;
    for (size_t i = 0; i < merged.size(); ++i)
        made_of[key_of(merged.identity_at(i))].places.push_back(i);
    const std::vector<size_t> numbers = numbers_by_identity(all);
    std::string lines;
    for (size_t i = 0; i < all.size(); ++i) {
        const value identity = all.identity_at(i);
        const std::string name = identity_text(identity, type.identity(), numbers[i]);
        made_records &made = made_of[key_of(identity)];
        if (made.places.empty()) { // the channel got this name after another, by which it was merged
            lines += line(source.name, name + ": the record is left out");
            continue;
        }
        const bool is_merged = numbers[i] > made.places.size();
        if (is_merged && !made.last)
            made.last.emplace(merged.at(made.places.back()), type);
        const auto lost =
            is_merged ? made.last->lost_fields(all.at(i))
                      : merged_record(merged.at(made.places[numbers[i] - 1]), type).lost_fields(all.at(i));
        for (const difference &one : lost)
            if (holds(to, one.field))
                lines += line(source.name, name + (is_merged ? ", merged into the first: " : ": ") +
                                               difference_text(one, "gives way to"));
    }
    return lines;
}

std::string lost_in_shifting(const document &source, const record_list &numbers) {
    const record_type &type = numbers.type();
    const std::vector<size_t> which = numbers_by_identity(numbers);
    std::string lines;
    for (size_t i = 0; i < numbers.size(); ++i) {
        const record fields = numbers.at(i);
        for (size_t row = 0; row < type.rows.size(); ++row) {
            if (!is_mask(type.rows[row]))
                continue;
            const bool is_event = type.rows[row].kind == EVENT_MASK;
            const std::int64_t number = fields.fields[row].number();
            if (!(is_event ? is_event_type(number) : is_block_type(number)))
                lines +=
                    line(source.name,
                         identity_text(fields.fields.front(), type.identity(), which[i]) + ": " +
                             type.rows[row].name + ": " + std::to_string(static_cast<std::int32_t>(number)) +
                             " is no number of " + (is_event ? "an event" : "a block") + " type, which go " +
                             (is_event ? event_type_numbers : block_type_numbers));
        }
    }
    return lines;
}
