#include <algorithm>

#include "check/number_faults.h"
#include "check/tree_builder.h"
#include "words/nearest.h"

namespace {

using zeb5::element_row;
using zeb5::value_kind;

constexpr std::size_t none = tree_record::none;

/// Names that belong to XML itself or to schemas.
bool is_of_xml(std::string_view attribute) {
    return attribute == "xmlns" || attribute.find(':') != attribute.npos;
}

std::string whole_number(double number) { return std::to_string(static_cast<std::int64_t>(number)); }

} // namespace

/// The known name that is meant by an unknown one. A document may have a million of them, so only the first
/// thousand are compared.
const std::string &tree_builder::meant_by(std::string_view name) {
    constexpr std::size_t most_names = 1000;
    static const std::string nothing;
    if (const auto found = meant_.find(name); found != meant_.end())
        return found->second;
    if (meant_.size() == most_names)
        return nothing;
    std::string meant = nearest(name, names_);
    return meant_.emplace(name, meant.empty() ? beginning_of(name) : std::move(meant)).first->second;
}

/// The known name that an unknown one begins with, as <PROPERTY> does; empty for names of records, of which
/// more than the element would be meant.
std::string tree_builder::beginning_of(std::string_view name) const {
    constexpr std::size_t fewest_letters = 4;
    for (const std::string &known : names_)
        if (known.size() >= fewest_letters && name.substr(0, known.size()) == known &&
            rows_.at(known).front()->opens == zeb5::no_level)
            return known;
    return "";
}

void tree_builder::take_unknown(std::size_t number, surroundings &own) {
    const std::string_view name = elements_[number].name;
    const std::string &meant = meant_by(name);
    std::string message = "no reader knows " + in_tag(name);
    if (is_wrapper(number, meant)) {
        message += ", and what is in it is read as if it were not there";
    } else if (!meant.empty()) {
        const element_row &row = *rows_.find(meant)->second.front();
        const bool opens = row.opens != zeb5::no_level;
        message += "; did you mean " + in_tag(meant) + "?";
        if (opens && row.value == value_kind::NONE && !row.absence)
            message += " What is in it goes to the record before it, or is ignored";
        else if (row.absence && changes_between(name, meant) == 1)
            message.append(" Without it, ").append(row.absence);
        own.is_muted = own.is_muted || opens;
    }
    tell(rule::UNKNOWN_ELEMENT, number, own.record, message);
}

/// Whether the first element in this one is what its name could mean, as in <CHANNELS>.
bool tree_builder::is_wrapper(std::size_t number, std::string_view meant) const {
    const std::size_t next = number + 1;
    return next < elements_.size() && elements_[next].parent == number && elements_[next].name == meant;
}

void tree_builder::tell_orphan(std::size_t number, const element_row &row) {
    const std::size_t owner = current(row.level);
    if (owner != none)
        tell(rule::MISPLACED_ELEMENT, number, owner,
             in_tag(row.name) + " is ignored here: it is read in " + in_tag(row.only_in) + " only");
    else
        tell(rule::ORPHAN_ELEMENT, number, around(number).record,
             in_tag(row.name) + " is ignored: there is no " + level(row.level).noun + " that it belongs to");
    tell_that_it_is_lost();
}

/// An element should stand in the record that gets it, or behind the element that opened this record and
/// holds nothing but its number or name.
void tree_builder::check_place(std::size_t number, const element_row &row, std::size_t owner) {
    const surroundings &place = around(number);
    const bool is_in_value =
        place.row && place.row->opens == zeb5::no_level && place.row->value != value_kind::NONE;
    bool is_right = place.record == owner && !place.has_failed && !is_in_value;
    if (!is_right && !place.has_failed && !is_in_value) {
        std::size_t outer = owner; // goes outwards over records that a value opened
        while (outer != place.record && outer != 0 && record(outer).row->value != value_kind::NONE)
            outer = record(outer).parent;
        is_right = outer == place.record;
    }
    if (is_right)
        return;
    std::string message = in_tag(row.name) + " stands in " + in_tag(elements_[elements_[number].parent].name);
    if (row.opens != zeb5::no_level && owner == 0)
        message +=
            std::string(" but begins a new ") + level(row.opens).noun + ", which gets all that follows";
    else {
        const std::string name = described(document_, tree_, owner);
        message += " but goes to " + (name.empty() ? level(row.level).noun : name.substr(0, name.size() - 2));
    }
    tell(rule::MISPLACED_ELEMENT, number, place.record, message);
}

void tree_builder::check_attributes(std::size_t number, const element_row *row) {
    const outline_element &element = elements_[number];
    const std::size_t around_it = element.parent == none ? 0 : around(number).record;
    for (std::size_t i = 0; i < element.attributes; ++i) {
        const outline_attribute &attribute = document_.content.attributes[element.first_attribute + i];
        if (!is_of_xml(attribute.name) && !(row && attribute.name == row->attribute))
            tell_at(attribute.at, rule::IGNORED_ATTRIBUTE, around_it,
                    "no reader looks at the attribute " + in_quotes(attribute.name) + " of " +
                        in_tag(element.name));
    }
}

/// Text that no reader takes: that of groups, and what follows a child.
void tree_builder::check_texts(std::size_t number, bool reads_text, std::size_t around_it) {
    const outline_element &element = elements_[number];
    for (std::size_t i = 0; i < element.pieces && !reads_text; ++i) {
        const text_piece &piece = document_.content.pieces[element.first_piece + i];
        const std::string_view text = trimmed(piece.text);
        if (text.empty())
            continue;
        tell_at(piece.at + static_cast<std::size_t>(text.data() - piece.text.data()), rule::IGNORED_TEXT,
                around_it, "the text " + in_quotes(text) + " of " + in_tag(element.name) + " is not read");
        break;
    }
    if (element.later_text != none)
        tell_at(element.later_text, rule::IGNORED_TEXT, around_it,
                "text of " + in_tag(element.name) + " that follows another element is not read");
}

void tree_builder::note_duplicate(std::size_t number, const element_row &row, std::size_t owner,
                                  const std::string &value) {
    tree_record &own = record(owner);
    std::string key = row.value == value_kind::TEXT ? value : std::to_string(number_read(row, value));
    if (!document_.merges)
        key.resize(as_kept(row, key).size()); // look-ups compare what is kept
    const auto [place, is_new] =
        first_of_.try_emplace(std::string(row.name) + '=' + key, first_use{number, owner});
    if (is_new)
        return;
    if (place->second.record == owner) { // and a repeated element, which is told already
        own.is_ignored = document_.merges;
        return;
    }
    std::string message = "another " + std::string(level(own.level).noun) + " has the same " +
                          in_tag(row.name) + " " + in_quotes(value) + ": ";
    if (document_.merges) {
        message += "only event types are merged into it, and the rest of this one is ignored";
        own.is_ignored = !own.made;
    } else
        message += "both are kept, and look-ups find the first one only";
    tell(rule::DUPLICATE_IDENTITY, number, none, message, elements_[place->second.element].at);
    if (document_.merges)
        tell_that_it_is_lost();
}

/// Parts are told apart by their names, or by their numbers when these are empty. Events are parts of the
/// document.
void tree_builder::note_repeated_part(std::size_t number, const element_row &row, std::size_t part,
                                      const std::string &name) {
    const tree_record &own = tree_.records[part];
    const std::string value = name.empty()
                                  ? whole_number(number_read(row, number_text(document_, row, number)))
                                  : std::string(as_kept(row, name));
    const std::string key =
        std::to_string(row.is_identity ? 0 : own.parent) + std::string(row.name) + '=' + value;
    const auto [place, is_new] = first_of_.try_emplace(key, first_use{number, part});
    if (!is_new)
        tell(rule::DUPLICATE_IDENTITY, number, own.parent,
             std::string("there is another ") + level(row.opens).noun + " " +
                 (name.empty() ? value : in_quotes(name)) + ": both are kept",
             elements_[place->second.element].at);
}

void tree_builder::tell_lost(std::size_t number, const element_row &row, std::size_t of,
                             const element_text &text) {
    tell(rule::LOST_TEXT, number, of, what_is_kept(row.name, text, {}));
}

/// The reader made no record, although nothing that was found so far says so.
void tree_builder::tell_not_made(std::size_t number, const element_row &row, std::size_t of) {
    if (!document_.is_whole || !document_.list)
        return;
    const element_text text = text_of(document_.content, elements_[number]);
    if (text.is_split())
        tell_lost(number, row, of, text);
    else
        tell(rule::FEWER_RECORDS, number, of,
             "the reader makes no " + std::string(level(record(of).level).noun) + " of it");
}

/// Records that never got into the list; what was ignored in them is not told one by one.
void tree_builder::tell_missing_identities() {
    std::vector<bool> is_told(tree_.records.size());
    for (std::size_t i = 1; i < tree_.records.size(); ++i) {
        const tree_record &own = tree_.records[i];
        const std::uint64_t all = identities_of(own.level),
                            missing = all & ~own.identities & ~own.empty_identities;
        if (missing == 0 || !elements_[own.opener].is_closed)
            continue;
        is_told[i] = true;
        for (std::size_t row = 0; row < document_.kind.rows.size(); ++row)
            if (missing >> row & 1)
                tell(rule::MISSING_IDENTITY, own.opener, i,
                     in_tag(own.row->name) + " has no " + in_tag(document_.kind.rows[row].name) + ": " +
                         document_.kind.rows[row].absence);
    }
    const auto is_covered = [&](const pending_finding &one) {
        return one.what.id == rule::ORPHAN_ELEMENT && one.record != none && is_told[one.record];
    };
    pending_.erase(std::remove_if(pending_.begin(), pending_.end(), is_covered), pending_.end());
}
