#include "record_tree.h"

#include <algorithm>
#include <unordered_map>

#include "element_text.h"
#include "nearest.h"
#include "number_faults.h"

namespace {

using zeb5::element_row;
using zeb5::value_kind;

constexpr std::size_t none = tree_record::none;

bool reads_number(const element_row &row) {
    return row.value != value_kind::NONE && row.value != value_kind::UNREAD && row.value != value_kind::TEXT;
}

/// Names that belong to XML itself or to schemas.
bool is_of_xml(std::string_view attribute) {
    return attribute == "xmlns" || attribute.find(':') != attribute.npos;
}

std::string in_tag(std::string_view name) { return "<" + std::string(name.substr(0, 60)) + ">"; }

class tree_builder {
public:
    explicit tree_builder(const checked_document &document)
        : document_(document), elements_(document.content.elements) {
        for (const element_row &row : document.kind.rows) {
            rows_[row.name].push_back(&row);
            if (!row.is_stray)
                names_.emplace_back(row.name);
        }
        current_.fill(none);
        last_.fill(none);
    }

    record_tree run();

private:
    /// What an element means for those in it.
    struct surroundings {
        std::size_t record;               // that encloses them
        bool is_muted = false;            // the element is probably a misspelt record
        bool has_failed = false;          // it should have opened a record but did not
        const element_row *row = nullptr; // null: an unknown element, or the root
    };

    void take(std::size_t number);
    void take_unknown(std::size_t number, surroundings &own);
    bool is_wrapper(std::size_t number, std::string_view meant) const;
    void take_muted(std::size_t number, const element_row &row);
    void take_known(std::size_t number, const element_row &row, surroundings &own);
    void fill(std::size_t number, const element_row &row, std::size_t owner, surroundings &own);
    void open(std::size_t number, const element_row &row, std::size_t owner, surroundings &own);
    void open_ignored(std::size_t number, const element_row &row, std::size_t owner);
    void note_repeated_part(std::size_t number, const element_row &row, std::size_t part);
    std::size_t add_record(std::size_t number, const element_row &row, std::size_t owner);
    void identify(std::size_t number, const element_row &row, std::size_t owner, const std::string &value);
    void list_again(std::size_t owner);
    void note_duplicate(std::size_t number, const element_row &row, tree_record &record,
                        const std::string &value);
    const element_row &choose(const std::vector<const element_row *> &rows) const;
    bool acts(const element_row &row) const;
    void check_place(std::size_t number, const element_row &row, std::size_t owner);
    void check_attributes(std::size_t number, const element_row *row);
    void check_texts(std::size_t number, bool reads_text, std::size_t record);
    void tell_orphan(std::size_t number, const element_row &row);
    void tell_missing_identities();

    void tell(rule id, std::size_t number, std::size_t record, const std::string &message,
              std::size_t first = finding::none) {
        pending_.push_back({{elements_[number].at, id, message, first}, record});
    }
    void tell_at(std::size_t place, rule id, std::size_t record, const std::string &message) {
        pending_.push_back({{place, id, message}, record});
    }
    tree_record &record(std::size_t number) { return tree_.records[number]; }
    const surroundings &around(std::size_t number) const { return around_[elements_[number].parent]; }
    const zeb5::level_row &level(int number) const {
        return document_.kind.levels[static_cast<std::size_t>(number)];
    }
    std::size_t &current(int level) { return current_[static_cast<std::size_t>(level)]; }
    std::size_t current(int level) const { return current_[static_cast<std::size_t>(level)]; }
    std::uint64_t identities_of(int level) const;

    /// A finding whose record gets its label only later.
    struct pending_finding {
        finding what;
        std::size_t record;
    };

    const checked_document &document_;
    const std::vector<outline_element> &elements_;
    std::unordered_map<std::string_view, std::vector<const element_row *>> rows_;
    std::vector<std::string> names_;
    std::vector<surroundings> around_;                          // by element: what it means for those in it
    std::array<std::size_t, tree_record::most_levels> current_; // record of each level
    std::array<std::size_t, tree_record::most_levels> last_;    // that was opened by a value, of each level
    std::unordered_map<std::string, std::size_t> first_of_;     // by identity: its first element
    std::vector<pending_finding> pending_;
    record_tree tree_;
};

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

void tree_builder::take_unknown(std::size_t number, surroundings &own) {
    const std::string_view name = elements_[number].name;
    const std::string meant = nearest(name, names_);
    std::string message = "no reader knows " + in_tag(name);
    if (is_wrapper(number, meant)) {
        message += ", and what is in it is read as if it were not there";
    } else if (!meant.empty()) {
        const element_row &row = *rows_.find(meant)->second.front();
        const bool opens = row.opens != zeb5::no_level;
        message += "; did you mean " + in_tag(meant) + "?";
        if (opens && row.value == value_kind::NONE)
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
        fill(number, row, owner, own);
}

void tree_builder::tell_orphan(std::size_t number, const element_row &row) {
    const std::size_t owner = current(row.level);
    if (owner != none)
        return tell(rule::MISPLACED_ELEMENT, number, owner,
                    in_tag(row.name) + " is ignored here: it is read in " + in_tag(row.only_in) + " only");
    tell(rule::ORPHAN_ELEMENT, number, around(number).record,
         in_tag(row.name) + " is ignored: there is no " + level(row.level).noun + " that it belongs to");
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

/// A value for a field of the current record.
void tree_builder::fill(std::size_t number, const element_row &row, std::size_t owner, surroundings &own) {
    const element_text text = text_of(document_.content, elements_[number]);
    if (row.is_identity && text.is_blank()) {
        tell(rule::EMPTY_IDENTITY, number, owner,
             in_tag(row.name) + " is empty: " + (row.absence ? row.absence : "the record is not read"));
        record(owner).identities |= std::uint64_t{1} << (&row - document_.kind.rows.data());
        record(owner).is_doubtful = true;
        return;
    }
    for (filled_field &field : record(owner).fields) {
        const bool is_same = row.text ? field.row->text == row.text : field.row->number == row.number;
        if (!is_same || field.is_replaced || (row.value == value_kind::TEXT && text.is_blank()))
            continue;
        field.is_replaced = true;
        tell(rule::REPEATED_ELEMENT, number, owner,
             in_tag(row.name) + (row.is_identity ? " renames the record and lists it again"
                                                 : " replaces the value that was read before"),
             elements_[field.element].at);
    }
    record(owner).fields.push_back({&row, number});
    if (row.is_identity)
        identify(number, row, owner, text.whole);
    own.record = around(number).record;
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
        own.label = row.value == value_kind::TEXT ? in_quotes(value) : std::string(trimmed(value));
    if (!was_whole && (own.identities & all) == all) {
        own.made = document_.list ? next_part(document_, record(0), own.level, row, number) : nullptr;
        if (!own.made)
            own.is_doubtful = true;
    } else if (was_whole)
        list_again(owner);
    note_duplicate(number, row, own, value);
}

/// A further identity lists the record once more.
void tree_builder::list_again(std::size_t owner) {
    tree_record &own = record(owner);
    const zeb5::part_access part = level(own.level).part;
    std::size_t &taken = record(0).taken[static_cast<std::size_t>(own.level)];
    while (document_.list && own.made && part(document_.list, taken) == own.made)
        ++taken;
}

void tree_builder::note_duplicate(std::size_t number, const element_row &row, tree_record &own,
                                  const std::string &value) {
    std::string key = row.value == value_kind::TEXT ? value : std::to_string(number_read(row, value));
    if (row.size != 0 && !document_.merges)
        key.resize(std::min(key.size(), row.size - 1)); // look-ups compare what is kept
    const auto [place, is_new] = first_of_.emplace(std::string(row.name) + '=' + key, number);
    if (is_new)
        return;
    std::string message = "another " + std::string(level(own.level).noun) + " has the same " +
                          in_tag(row.name) + " " + in_quotes(value) + ": ";
    if (document_.merges) {
        message += "only event types are merged into it, and the rest of this one is ignored";
        own.is_ignored = !own.made;
    } else
        message += "both are kept, and look-ups find the first one only";
    tell(rule::DUPLICATE_IDENTITY, number, none, message, elements_[place->second].at);
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
    const bool is_missing = !row.attribute.empty() && number_text(document_, row, number).empty();
    if (is_missing || (has_value && text.is_blank())) {
        own.has_failed = true;
        if (is_missing)
            return tell(rule::MISSING_ATTRIBUTE, number, owner,
                        in_tag(row.name) + " has no attribute " + in_quotes(row.attribute) +
                            ": the reader reports it and makes no " + level(row.opens).noun);
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
    if (row.is_identity)
        record(owner).identities |= identities_of(row.level);
    const std::size_t added = add_record(number, row, owner);
    own.record = added;
    tree_record &opened = record(added);
    if (row.attribute.empty() && row.value == value_kind::NONE)
        return;
    opened.label =
        has_number ? std::string(trimmed(number_text(document_, row, number))) : in_quotes(text.whole);
    opened.fields.push_back({&row, number});
    if (has_number && !row.is_identity)
        note_repeated_part(number, row, added);
    if (row.is_identity && document_.list) {
        opened.made = next_part(document_, record(0), row.opens, row, number);
        opened.is_ignored = !opened.made; // a type that the reader refuses
    }
    if (!opened.is_ignored)
        last_[static_cast<std::size_t>(row.opens)] = added;
}

void tree_builder::note_repeated_part(std::size_t number, const element_row &row, std::size_t part) {
    const tree_record &own = tree_.records[part];
    const std::string key = std::to_string(own.parent) + std::string(row.name) + '=' +
                            std::to_string(number_read(row, number_text(document_, row, number)));
    const auto [place, is_new] = first_of_.emplace(key, number);
    if (!is_new)
        tell(rule::DUPLICATE_IDENTITY, number, own.parent,
             std::string("there is another ") + level(row.opens).noun + " " + own.label + ": both are kept",
             elements_[place->second].at);
}

/// Records that never got into the list; what was ignored in them is not told one by one.
void tree_builder::tell_missing_identities() {
    std::vector<bool> is_told(tree_.records.size());
    for (std::size_t i = 1; i < tree_.records.size(); ++i) {
        const tree_record &own = tree_.records[i];
        const std::uint64_t all = identities_of(own.level), missing = all & ~own.identities;
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

} // namespace

record_tree tree_of(const checked_document &document) { return tree_builder(document).run(); }

std::string described(const checked_document &document, const record_tree &tree, std::size_t number) {
    std::string text;
    for (; number != none && number != 0; number = tree.records[number].parent) {
        const tree_record &record = tree.records[number];
        const zeb5::level_row &level = document.kind.levels[static_cast<std::size_t>(record.level)];
        if (level.part && !record.label.empty())
            text.insert(0, level.noun + (" " + record.label) + (text.empty() ? ": " : ", "));
    }
    return text;
}

std::string number_text(const checked_document &document, const element_row &row, std::size_t number) {
    const outline_element &element = document.content.elements[number];
    if (row.attribute.empty())
        return text_of(document.content, element).whole;
    for (std::size_t i = 0; i < element.attributes; ++i) {
        const outline_attribute &attribute = document.content.attributes[element.first_attribute + i];
        if (attribute.name == row.attribute)
            return attribute_value(attribute.value);
    }
    return "";
}
