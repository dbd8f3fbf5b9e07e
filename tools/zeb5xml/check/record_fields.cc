#include "check/record_fields.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "check/element_text.h"
#include "check/number_faults.h"
#include "elements/chan_descriptions_elements.h"
#include "parse_chan_descr.h"
#include "parse_ev_list.h"
#include "values/type_names.h"
#include "words/utf_8.h"
#include "words/words.h"

namespace {

/// The last characters of a text, which may end within one.
std::string_view tail_of(std::string_view text) {
    std::string_view tail = text.substr(text.size() - std::min<std::size_t>(text.size(), 20));
    while (!tail.empty() && continues_character(tail[0]))
        tail.remove_prefix(1);
    return tail;
}

using zeb5::element_row;
using zeb5::value_kind;

std::string plain(double number, bool is_real) {
    char text[32];
    std::snprintf(text, sizeof text, is_real ? "%.9g" : "%.0f", number);
    return text;
}

/// Whether a field holds the number of a type, or a mask of types.
enum class type_field { NO, EVENT_TYPE, EVENT_MASK, BLOCK_WORD };

type_field type_field_of(const element_row &row) {
    if (row.number == zeb5::number_at<&zeb5_ev_entry::evtype>)
        return type_field::EVENT_TYPE;
    if (row.number == zeb5::number_at<&chan_descr_2010::ev_type>)
        return type_field::EVENT_MASK;
    return row.number == zeb5::number_at<&chan_descr_2010::dtype> ? type_field::BLOCK_WORD : type_field::NO;
}

/// Says which number an author should write instead of the name of a type.
std::string advice_on_name(const element_row &row, const std::string &name) {
    const type_field field = type_field_of(row);
    const int type = field == type_field::NO           ? -1
                     : field == type_field::BLOCK_WORD ? block_type_of(name)
                                                       : event_type_of(name);
    if (type < 0)
        return "";
    const std::uint32_t number = field == type_field::EVENT_TYPE   ? static_cast<std::uint32_t>(type)
                                 : field == type_field::EVENT_MASK ? std::uint32_t{1} << type
                                                                   : word_of_block(type);
    return ": write " + std::to_string(number) + " for " + name;
}

class field_check {
public:
    field_check(const checked_document &document, record_tree &tree, const field_rules &rules)
        : document_(document), tree_(tree), rules_(rules) {}

    std::vector<finding> run() {
        for (std::size_t i = 1; i < tree_.records.size(); ++i) {
            record_ = i;
            find_part(tree_.records[i]);
            is_replaced_ = true;
            for (const filled_field &field : tree_.records[i].replaced_fields)
                check(field);
            is_replaced_ = false;
            for (const filled_field &field : tree_.records[i].fields)
                check(field);
            check_name(tree_.records[i]);
        }
        return std::move(found_);
    }

private:
    void find_part(tree_record &own);
    void check_parts(const tree_record &own, std::size_t parts);
    void check(const filled_field &field);
    void check_text(const filled_field &field, const element_text &text);
    void check_number(const filled_field &field, std::string_view text, bool is_split);
    void check_types(const element_row &row, double kept, std::size_t element);
    void check_name(const tree_record &own);
    void check_writable(const element_row &row, std::string_view kept, std::size_t element);

    void tell(rule id, std::size_t element, const std::string &message) {
        found_.push_back(
            {document_.content.elements[element].at, id, described(document_, tree_, record_) + message});
    }

    /// The record that the reader filled; null when nothing is known of it.
    const void *made() const {
        const tree_record &own = tree_.records[record_];
        return own.is_doubtful || own.is_ignored ? nullptr : own.made;
    }

    const checked_document &document_;
    record_tree &tree_;
    const field_rules &rules_;
    std::size_t record_ = 0;
    bool is_replaced_ = false; // the field that is checked holds another value
    std::vector<finding> found_;
};

/// Finds what the reader made of a part that its own element opened.
void field_check::find_part(tree_record &own) {
    const auto part_of = [this](int level) {
        return document_.kind.levels[static_cast<std::size_t>(level)].part;
    };
    const bool is_valued = own.row->value != value_kind::NONE || !own.row->attribute.empty();
    if (own.made || own.is_ignored || !is_valued || !part_of(own.level) || own.row->is_identity)
        return;
    std::size_t around = own.parent;
    while (around != 0 && !part_of(tree_.records[around].level))
        around = tree_.records[around].parent;
    tree_record &owner = tree_.records[around];
    own.is_doubtful = owner.is_doubtful;
    if (!owner.made || owner.is_doubtful)
        return;
    const std::size_t &taken = owner.taken[static_cast<std::size_t>(own.level)], before = taken;
    own.made = next_part(document_, owner, own.level, *own.row, own.opener);
    if (own.made)
        return check_parts(own, taken - before);
    own.is_doubtful = true;
    if (!document_.is_whole)
        return;
    const element_text text = text_of(document_.content, document_.content.elements[own.opener]);
    if (text.is_split())
        tell(rule::LOST_TEXT, own.opener, what_is_kept(own.row->name, text, {}));
    else
        tell(rule::FEWER_RECORDS, own.opener,
             std::string("the reader makes no ") +
                 document_.kind.levels[static_cast<std::size_t>(own.level)].noun + " of it");
}

/// In every document, a reader makes a titled bit twice: without its title, and with it. More than that is
/// meant by nobody.
void field_check::check_parts(const tree_record &own, std::size_t parts) {
    const element_text text = text_of(document_.content, document_.content.elements[own.opener]);
    const std::size_t usual = own.row->value == value_kind::TEXT && !text.is_blank() ? 2 : 1;
    if (parts > usual)
        tell(rule::REPEATED_ELEMENT, own.opener,
             "the reader makes " + std::to_string(parts) + " " +
                 document_.kind.levels[static_cast<std::size_t>(own.level)].noun + "s of " +
                 in_tag(own.row->name) + ": one at its start tag, and one at each comment or text behind it");
}

void field_check::check(const filled_field &field) {
    const element_row &row = *field.row;
    const element_text text = text_of(document_.content, document_.content.elements[field.element]);
    if (row.value == value_kind::TEXT)
        check_text(field, text);
    else if (row.value != value_kind::NONE)
        check_number(field, text.whole, text.is_split());
    if (!row.attribute.empty())
        check_number(field, number_text(document_, row, field.element), false);
}

void field_check::check_text(const filled_field &field, const element_text &text) {
    const element_row &row = *field.row;
    const std::string tag = in_tag(row.name);
    if (text.is_blank() && !text.has_entity)
        return;
    const auto cut_at = [&](std::size_t size, std::string_view kept, const char *where) {
        tell(rule::CUT_FIELD, field.element,
             "the text of " + tag + " has " + std::to_string(text.whole.size()) + " bytes, of which " +
                 std::to_string(size - 1) + " are kept" + where + ": it ends with " +
                 in_quotes(tail_of(kept)));
        found_.back().kept = size - 1;
    };
    if (row.is_identity && rules_.small_field != 0 && text.whole.size() >= rules_.small_field)
        cut_at(rules_.small_field, std::string_view(text.whole).substr(0, rules_.small_field - 1),
               " in the classic layout");
    if (!made() || is_replaced_)
        return;
    const std::string_view kept = row.text(made());
    const bool is_cut = row.size != 0 && text.whole.size() >= row.size;
    const bool is_whole =
        kept == std::string_view(text.whole).substr(0, is_cut ? row.size - 1 : text.whole.npos);
    if (is_whole && is_padded(text.whole))
        tell(rule::PADDED_VALUE, field.element,
             "the white space around the text of " + tag + " is kept: " + in_quotes(text.whole));
    if (is_whole && is_cut)
        cut_at(row.size, kept, "");
    if (!is_whole && text.is_split())
        tell(rule::LOST_TEXT, field.element, what_is_kept(row.name, text, kept));
    check_writable(row, kept, field.element);
}

void field_check::check_number(const filled_field &field, std::string_view text, bool is_split) {
    const element_row &row = *field.row;
    const bool is_real = row.value == value_kind::REAL;
    const bool is_known = made() && !is_replaced_;
    const double kept = is_known ? row.number(made()) : number_read(row, text);
    const std::string name =
        row.attribute.empty() ? in_tag(row.name) : in_quotes(row.attribute) + " of " + in_tag(row.name);
    const auto fault = fault_of_number(row, text);
    if (fault) {
        const bool is_refused = tree_.records[record_].is_ignored && row.is_identity;
        const std::string what_is_kept =
            is_refused                     ? "the reader makes nothing of it, and ignores what belongs to it"
            : is_replaced_ && text.empty() ? "the value before it stays"
            : is_replaced_                 ? "it reads as " + plain(kept, is_real)
                                           : "the reader keeps " + plain(kept, is_real);
        const rule id = is_refused && fault->id == rule::VALUE_RANGE ? rule::FEWER_RECORDS : fault->id;
        const std::string advice =
            id == rule::NOT_A_NUMBER ? advice_on_name(row, std::string(trimmed(text))) : "";
        tell(id, field.element, name + ": " + fault->what + advice + "; " + what_is_kept);
    } else if (is_known && is_split && kept != number_read(row, text))
        tell(rule::LOST_TEXT, field.element,
             "the text of " + name + " comes in pieces: the reader keeps " + plain(kept, is_real) + ", not " +
                 in_quotes(text));
    if (is_known)
        check_types(row, kept, field.element);
    if (!fault && is_known && is_real && rules_.is_written) {
        char written[400];
        std::snprintf(written, sizeof written, "%f", kept);
        if (std::strtof(written, nullptr) != static_cast<float>(kept))
            tell(rule::NOT_WRITABLE, field.element,
                 name + ": a writer keeps six decimals: " + plain(kept, is_real) + " becomes " + written);
    }
}

void field_check::check_types(const element_row &row, double kept, std::size_t element) {
    const type_field field = type_field_of(row);
    const bool is_single = field == type_field::EVENT_TYPE, is_event = field != type_field::BLOCK_WORD;
    if (field == type_field::NO || (is_single && kept >= double{ZEB5_EV_EVMAX}))
        return;
    const auto number = static_cast<std::uint32_t>(kept);
    const auto unnamed = is_single  ? unnamed_events(std::uint32_t{1} << number)
                         : is_event ? unnamed_events(number)
                                    : unnamed_blocks(number);
    if (!unnamed.empty())
        tell(rule::UNNAMED_TYPE, element,
             in_tag(row.name) + ": no name is known for " + (is_event ? "event " : "block ") +
                 (unnamed.size() == 1 ? "type " : "types ") + joined(unnamed, ", "));
}

void field_check::check_name(const tree_record &own) {
    if (own.level != zeb5::CHANNEL_LEVEL || document_.kind.levels.data() != zeb5::channel_levels || !made())
        return;
    for (const element_row &row : document_.kind.rows)
        if (row.text == zeb5::text_at<&chan_descr_2010::daq_name> && row.text(made()).empty())
            tell(rule::MISSING_NAME, own.opener,
                 "there is no " + in_tag(row.name) + ": a writer names the channel '!!!UNDEFINED!!!'");
}

/// Writers escape nothing, and label what they write as ISO-8859-1.
void field_check::check_writable(const element_row &row, std::string_view kept, std::size_t element) {
    if (!rules_.is_written)
        return;
    for (std::size_t at = 0; at < kept.size(); ++at) {
        const auto byte = static_cast<unsigned char>(kept[at]);
        const bool is_control = byte < 0x20 && byte != '\t' && byte != '\n';
        const bool is_mark = byte == '&' || byte == '<' || kept.substr(at, 3) == "]]>";
        if (byte >= 0x80)
            return tell(rule::NOT_WRITABLE, element,
                        in_tag(row.name) + ": a writer labels UTF-8 as ISO-8859-1, so " + in_quotes(kept) +
                            " is read back as other characters");
        if (is_mark || is_control)
            return tell(rule::NOT_WRITABLE, element,
                        in_tag(row.name) + ": a writer escapes nothing, so " +
                            in_quotes(kept.substr(at, is_mark && byte == ']' ? 3 : 1)) +
                            " is not read back from what it writes");
    }
}

} // namespace

std::vector<finding> faults_of_fields(const checked_document &document, record_tree &tree,
                                      const field_rules &rules) {
    return field_check(document, tree, rules).run();
}
