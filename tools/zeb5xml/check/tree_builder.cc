#include "check/tree_builder.h"

#include "check/number_faults.h"
#include "parse_chan_descr.h"

namespace {

using zeb5::element_row;
using zeb5::value_kind;

constexpr std::size_t none = tree_record::none;

bool reads_number(const element_row &row) {
    return row.value != value_kind::NONE && row.value != value_kind::UNREAD && row.value != value_kind::TEXT;
}

} // namespace

record_tree tree_builder::run() {
    tree_.records.emplace_back();
    current(zeb5::root_level) = 0;
    around_.reserve(elements_.size());
    for (std::size_t number = 0; number < elements_.size(); ++number)
        take(number);
    tell_missing_identities();
    for (pending_finding &one : pending_) {
        one.what.message.insert(0, described(document_, tree_, one.record));
        tree_.findings.push_back(std::move(one.what));
    }
    return std::move(tree_);
}

void tree_builder::take(std::size_t number) {
    const outline_element &element = elements_[number];
    if (element.parent == none) { // the root, and what a faulty document has behind it
        around_.push_back({0});
        check_attributes(number, nullptr);
        check_texts(number, false, 0);
        return;
    }
    const bool is_cut_off = !element.is_closed && number + 1 == elements_.size(); // where reading ends
    surroundings own = around(number);
    if (is_cut_off)
        return around_.push_back(own);
    own.has_failed = false;
    own.row = nullptr;
    const auto found = rows_.find(element.name);
    if (found == rows_.end())
        take_unknown(number, own);
    else if (const element_row &row = choose(found->second); own.is_muted)
        take_muted(number, row);
    else {
        own.row = &row;
        take_known(number, row, own);
    }
    around_.push_back(own);
}

/// What stands in a misspelt record changes the record before it.
void tree_builder::take_muted(std::size_t number, const element_row &row) {
    const std::size_t owner = current(row.level);
    if (owner == none || owner == 0 || row.value == value_kind::UNREAD)
        return;
    record(owner).is_doubtful = true;
    if (row.is_identity && !text_of(document_.content, elements_[number]).is_blank())
        list_again(owner);
}

/// Of rows of one name, the first that acts; the first one when none does.
const element_row &tree_builder::choose(const std::vector<const element_row *> &rows) const {
    for (const element_row *row : rows)
        if (acts(*row))
            return *row;
    return *rows.front();
}

bool tree_builder::acts(const element_row &row) const {
    const std::size_t owner = current(row.level);
    if (owner == none)
        return false;
    return row.only_in.empty() || tree_.records[owner].row->name == row.only_in;
}

void tree_builder::take_known(std::size_t number, const element_row &row, surroundings &own) {
    check_attributes(number, &row);
    if (row.value == value_kind::UNREAD)
        return;
    const std::size_t owner = current(row.level);
    if (owner != none && record(owner).is_ignored) {
        own.is_muted = row.opens != zeb5::no_level;
        return;
    }
    check_texts(number, row.value != value_kind::NONE, own.record);
    if (!acts(row)) {
        own.has_failed = row.opens != zeb5::no_level;
        own.is_muted = own.has_failed;
        return tell_orphan(number, row);
    }
    if (row.is_stray)
        tell(rule::ORPHAN_ELEMENT, number, own.record,
             in_tag(row.name) + " belongs to nothing here, so its text goes to the " + level(row.level).noun);
    else
        check_place(number, row, owner);
    if (row.opens != zeb5::no_level)
        open(number, row, owner, own);
    else
        fill(number, row, owner);
}

/// Notes which element fills a field. An element without text leaves the one before it there. Returns whether
/// the field is filled.
bool tree_builder::put_field(std::size_t number, const element_row &row, std::size_t owner, bool is_blank) {
    tree_record &own = record(owner);
    for (filled_field &field : own.fields) {
        if (row.text ? field.row->text != row.text : field.row->number != row.number)
            continue;
        if (is_blank && row.value == value_kind::TEXT)
            tell(rule::REPEATED_ELEMENT, number, owner,
                 in_tag(row.name) + " stands here again without a text: the value before it stays",
                 elements_[field.element].at);
        if (is_blank) {
            own.replaced_fields.push_back({&row, number});
            return false;
        }
        const char *effect = " replaces the value that was read before";
        if (row.is_identity)
            effect = document_.merges
                         ? " stands here again: the same name ends the record, another lists it anew"
                         : " stands here again: it renames the record and lists it once more";
        tell(rule::REPEATED_ELEMENT, number, owner, in_tag(row.name) + effect, elements_[field.element].at);
        if (!row.is_identity || document_.merges)
            tell_that_it_is_lost();
        own.replaced_fields.push_back(field);
        field = {&row, number};
        return true;
    }
    own.fields.push_back({&row, number});
    return true;
}

/// An identity of which nothing reaches the reader.
void tree_builder::lose_identity(std::size_t number, const element_row &row, std::size_t owner,
                                 const element_text &text) {
    tell_lost(number, row, owner, text);
    record(owner).empty_identities |= std::uint64_t{1} << (&row - document_.kind.rows.data());
}

/// A value for a field of the current record.
void tree_builder::fill(std::size_t number, const element_row &row, std::size_t owner) {
    const element_text text = text_of(document_.content, elements_[number]);
    if (row.is_identity && text.is_blank()) {
        const std::uint64_t own = std::uint64_t{1} << (&row - document_.kind.rows.data());
        if (record(owner).identities & own)
            return (void)put_field(number, row, owner, true); // the record keeps its identity
        tell(rule::EMPTY_IDENTITY, number, owner,
             in_tag(row.name) + " is empty: " + (row.absence ? row.absence : "the record is not read"));
        record(owner).empty_identities |= own;
        return;
    }
    if (row.is_identity && text.begins_blank)
        return lose_identity(number, row, owner, text);
    if (!put_field(number, row, owner, text.is_blank() || text.begins_blank))
        return;
    if (row.text == zeb5::text_at<&chan_descr_2010::daq_name>)
        record(owner).name_label = "named " + in_quotes(text.whole);
    if (row.is_identity)
        identify(number, row, owner, text.whole);
}

std::uint64_t tree_builder::identities_of(int level) const {
    std::uint64_t rows = 0;
    for (std::size_t i = 0; i < document_.kind.rows.size(); ++i)
        if (document_.kind.rows[i].is_identity && document_.kind.rows[i].level == level)
            rows |= std::uint64_t{1} << i;
    return rows;
}

void tree_builder::identify(std::size_t number, const element_row &row, std::size_t owner,
                            const std::string &value) {
    tree_record &own = record(owner);
    const std::uint64_t all = identities_of(own.level);
    const bool was_whole = (own.identities & all) == all;
    own.identities |= std::uint64_t{1} << (&row - document_.kind.rows.data());
    if (own.label.empty())
        own.label = row.value == value_kind::TEXT ? in_quotes(value) : shown(trimmed(value));
    if (!was_whole && (own.identities & all) == all) {
        own.made = document_.list ? next_part(document_, record(0), own.level, row, number) : nullptr;
        own.is_doubtful = !own.made;
    } else if (was_whole)
        list_again(owner);
    note_duplicate(number, row, owner, value);
    if (own.is_doubtful && !own.is_ignored)
        tell_not_made(number, row, owner);
}

/// A further identity lists the record once more.
void tree_builder::list_again(std::size_t owner) {
    tree_record &own = record(owner);
    const zeb5::part_access part = level(own.level).part;
    std::size_t &taken = record(0).taken[static_cast<std::size_t>(own.level)];
    while (document_.list && own.made && part(document_.list, taken) == own.made)
        ++taken;
}

std::size_t tree_builder::add_record(std::size_t number, const element_row &row, std::size_t owner) {
    tree_record added;
    added.level = row.opens;
    added.parent = owner;
    added.opener = number;
    added.row = &row;
    tree_.records.push_back(std::move(added));
    const std::size_t place = tree_.records.size() - 1;
    current(row.opens) = place;
    for (std::size_t i = 0; i < document_.kind.levels.size(); ++i) { // what was in the one before is over
        int outer = static_cast<int>(i);
        while (outer > row.opens)
            outer = level(outer).parent;
        if (outer == row.opens && static_cast<int>(i) != row.opens)
            current_[i] = none;
    }
    return place;
}

/// Stands for a record that was not made, so that what would belong to it is not told element by element. The
/// reader may give it to the record before.
void tree_builder::open_ignored(std::size_t number, const element_row &row, std::size_t owner) {
    record(owner).identities |= identities_of(row.level);
    if (const std::size_t last = last_[static_cast<std::size_t>(row.opens)]; last != none)
        record(last).is_doubtful = true;
    record(add_record(number, row, owner)).is_ignored = true;
}

void tree_builder::open(std::size_t number, const element_row &row, std::size_t owner, surroundings &own) {
    const bool has_number = reads_number(row) || !row.attribute.empty();
    const bool has_value = row.value != value_kind::NONE && row.attribute.empty();
    const element_text text = text_of(document_.content, elements_[number]);
    const bool is_missing = !row.attribute.empty() && !attribute_of(document_, row, number);
    if (is_missing || (has_value && (text.is_blank() || text.begins_blank))) {
        own.has_failed = true;
        if (is_missing)
            return tell(rule::MISSING_ATTRIBUTE, number, owner,
                        in_tag(row.name) + " has no attribute " + in_quotes(row.attribute) +
                            ": the reader reports it and makes no " + level(row.opens).noun);
        if (text.begins_blank)
            tell_lost(number, row, owner, text);
        else
            tell(row.is_identity ? rule::EMPTY_IDENTITY : rule::FEWER_RECORDS, number, owner,
                 in_tag(row.name) + " without a " + (has_number ? "number" : "name") + " gives no " +
                     level(row.opens).noun +
                     (row.is_identity ? "; what follows goes to the one before it, or is ignored" : ""));
        if (row.is_identity)
            open_ignored(number, row, owner);
        return;
    }
    if (row.is_identity && record(owner).identities != 0)
        tell(rule::REPEATED_ELEMENT, number, owner,
             in_tag(row.name) + " makes one more " + level(row.opens).noun + " of the same " +
                 level(row.level).noun);
    else if (!level(row.opens).part && owner != 0 && current(row.opens) != none)
        tell(rule::REPEATED_ELEMENT, number, owner,
             in_tag(row.name) + " stands here again: what is in it is added to what was read before");
    if (row.is_identity)
        record(owner).identities |= identities_of(row.level);
    const std::size_t added = add_record(number, row, owner);
    own.record = added;
    tree_record &opened = record(added);
    if (row.attribute.empty() && row.value == value_kind::NONE)
        return;
    opened.label = has_number ? shown(trimmed(number_text(document_, row, number))) : in_quotes(text.whole);
    opened.fields.push_back({&row, number});
    if (row.is_identity && document_.list) {
        opened.made = next_part(document_, record(0), row.opens, row, number);
        opened.is_ignored = !opened.made; // a type that the reader refuses
        if (opened.is_ignored && !fault_of_number(row, text.whole))
            tell_not_made(number, row, added);
    }
    if (opened.is_ignored)
        return;
    last_[static_cast<std::size_t>(row.opens)] = added;
    note_repeated_part(number, row, added, has_number ? "" : text.whole);
}
