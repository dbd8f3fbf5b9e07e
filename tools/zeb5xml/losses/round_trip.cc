#include "losses/round_trip.h"

#include <cstdio>
#include <cstdlib>

#include "files/standard_streams.h"
#include "records/differences.h"
#include "records/form_losses.h"
#include "records/record_order.h"
#include "values/value_text.h"
#include "words/words.h"

namespace {

/// Whether the text cannot stand in a document as it is. Writers do not escape.
bool is_ill_formed(const std::string &text) {
    for (const char c : text)
        if (c == '&' || c == '<' ||
            (static_cast<unsigned char>(c) < ' ' && c != '\t' && c != '\n' && c != '\r'))
            return true;
    return text.find("]]>") != std::string::npos;
}

std::string fault_of_text(const std::string &text, const std::string &effect) {
    return quoted_text(text) + " " + effect + ", as it is written without escaping";
}

/// What is wrong with a value in a document; empty when nothing is.
std::string fault_in_document(const value &one, const field_row &row) {
    return row.kind == TEXT && is_ill_formed(one.text())
               ? fault_of_text(one.text(), "makes the document ill-formed")
               : "";
}

/// The same in a table, whose cells are separated by tabs, and whose numbers have six decimals.
std::string fault_in_table(const value &one, const field_row &row) {
    if (row.kind == TEXT && one.text().find_first_of("\t\n\r") != std::string::npos)
        return fault_of_text(one.text(), "breaks its row");
    if (row.kind == REAL) {
        char written[64]; // no float is longer
        snprintf(written, sizeof written, "%f", std::get<real>(one.content).number);
        const value back = {real{strtof(written, nullptr)}};
        if (!(back == one))
            return value_text(one, row) + " becomes " + value_text(back, row);
    }
    return "";
}

/// Values of records that a form holds but cannot take.
struct unfit_values {
    const form &to;
    std::string (*fault_of)(const value &one, const field_row &row);

    /// Adds a line for each of them in the record.
    void add(texts &lines, const std::string &name, const record &fields, const record_type &type,
             const std::string &path = "") const {
        for (size_t i = 0; i < type.rows.size(); ++i) {
            const field_row &row = type.rows[i];
            const value &one = fields.fields[i];
            if (!to.is_document && !holds(to, path + row.name))
                continue; // writers of documents write also what no reader takes
            if (row.kind == PARTS)
                for (const record &part : one.parts())
                    add(lines, name, part, *row.part, path + row.name + ".");
            else if (const std::string fault = fault_of(one, row); !fault.empty())
                lines.push_back(name + ": " + path + row.name + ": " + fault);
        }
    }
};

/// What messages call the records of a list, and which of them are written.
class written_records {
public:
    written_records(const record_list &list, const record_kind &kind)
        : list_(list), kind_(kind), numbers_(numbers_by_identity(list)) {}

    bool is_written(size_t place) const { return !kind_.writes_once || numbers_[place] == 1; }
    size_t size() const {
        size_t count = 0;
        for (size_t i = 0; i < numbers_.size(); ++i)
            count += is_written(i);
        return count;
    }
    std::string name(size_t place) const {
        return identity_text(list_.identity_at(place), list_.type().identity(), numbers_[place]);
    }

private:
    const record_list &list_;
    const record_kind &kind_;
    const std::vector<size_t> numbers_;
};

std::string left_out(const std::string &name) { return name + ": the record is left out"; }

texts lost_in_text(const record_list &list, const record_kind &kind, const form &to) {
    const written_records written(list, kind);
    const unfit_values unfit{to, fault_in_table};
    texts lines;
    for (size_t i = 0; i < list.size(); ++i)
        if (written.is_written(i))
            unfit.add(lines, written.name(i), list.at(i), list.type());
        else
            lines.push_back(left_out(written.name(i)));
    return lines;
}

texts ill_formed_texts(const record_list &list, const record_kind &kind, const form &to,
                       const std::string &reports) {
    const written_records written(list, kind);
    const unfit_values unfit{to, fault_in_document};
    texts lines;
    for (size_t i = 0; i < list.size(); ++i)
        unfit.add(lines, written.name(i), list.at(i), list.type());
    if (lines.empty())
        lines.push_back("what would be written cannot be read: " + reports.substr(0, reports.find('\n')));
    return lines;
}

/// Gathers the differences of all records.
class loss_list {
public:
    loss_list(const record_kind &kind, const form &to) : kind_(kind), to_(to), of_form_(to.losses.size()) {}

    void compare(const std::string &name, const std::optional<record> &before,
                 const std::optional<record> &after) {
        if (!before || !after) {
            of_values_.push_back(before ? left_out(name) : name + ": a record that was not there appears");
            return;
        }
        for (const difference &one : differences(*before, *after, *kind_.type)) {
            const std::string line = name + ": " + difference_text(one, "becomes");
            const size_t loss = loss_of(to_, one);
            if (loss == to_.losses.size())
                of_values_.push_back(line);
            else
                of_form_[loss].count(records_, line);
        }
        ++records_;
    }

    round_trip_losses result() {
        round_trip_losses all;
        for (size_t i = 0; i < of_form_.size(); ++i) {
            const form_loss &loss = to_.losses[i];
            if (of_form_[i].records != 0)
                (loss.is_accepted ? all.accepted : all.refused)
                    .push_back((is_held(loss) ? std::string(to_.name) + " changes " + loss.field
                                              : std::string("no reader takes ") + loss.field + " from " +
                                                    to_.name + ": it changes") +
                               " in " + counted(of_form_[i].records, kind_.records) + ", such as " +
                               of_form_[i].example);
        }
        all.refused.insert(all.refused.end(), of_values_.begin(), of_values_.end());
        return all;
    }

private:
    struct occurrences {
        size_t records = 0;
        size_t last = 0;     // the record that was counted last, from 0
        std::string example; // the first one

        void count(size_t record, const std::string &line) {
            if (records == 0)
                example = line;
            else if (last == record)
                return;
            last = record;
            ++records;
        }
    };

    const record_kind &kind_;
    const form &to_;
    size_t records_ = 0;
    std::vector<occurrences> of_form_; // for each loss of the form
    texts of_values_;
};

} // namespace

round_trip_losses find_losses(const record_list &list, const record_kind &kind, const conversion &how,
                              const form &to, const std::string &text) {
    if (!to.is_document)
        return {{}, lost_in_text(list, kind, to)};
    const std::unique_ptr<record_list> back = kind.make(how);
    int problems = 0;
    const std::string reports = held_output({1, 2}, [&] { problems = back->read_back(text); });
    if (problems != 0)
        return {{}, ill_formed_texts(list, kind, to, readable_diagnostics(reports, to.name))};
    loss_list losses(kind, to);
    const written_records written(list, kind);
    if (back->size() != written.size()) // those that are there are matched by identity
        for_each_pair(list, *back, [&](const record_pair &pair) {
            losses.compare(pair.place ? written.name(*pair.place) : pair.name, pair.before, pair.after);
        });
    else
        for (size_t i = 0, next = 0; i < list.size(); ++i)
            losses.compare(written.name(i), list.at(i),
                           written.is_written(i) ? std::optional(back->at(next++)) : std::nullopt);
    return losses.result();
}
