#include "round_trip.h"

#include "differences.h"
#include "form_losses.h"
#include "standard_streams.h"
#include "value_text.h"
#include "words.h"

namespace {

/// Whether the text cannot stand in a document as it is. Writers do not escape.
bool is_ill_formed(const std::string &text) {
    for (const char c : text)
        if (c == '&' || c == '<' ||
            (static_cast<unsigned char>(c) < ' ' && c != '\t' && c != '\n' && c != '\r'))
            return true;
    return text.find("]]>") != std::string::npos;
}

/// Adds a line for each text of the record that makes the document ill-formed.
void add_ill_formed(texts &lines, const std::string &name, const record &fields, const record_type &type,
                    const std::string &path) {
    for (size_t i = 0; i < type.rows.size(); ++i) {
        const field_row &row = type.rows[i];
        const value &one = fields.fields[i];
        if (row.kind == PARTS)
            for (const record &part : one.parts())
                add_ill_formed(lines, name, part, *row.part, path + row.name + ".");
        else if (row.kind == TEXT && is_ill_formed(one.text()))
            lines.push_back(name + ": " + path + row.name + ": " + quoted_text(one.text()) +
                            " makes the document ill-formed, as it is written without escaping");
    }
}

texts ill_formed_texts(const record_list &list, const std::string &reports) {
    texts lines;
    for (size_t i = 0; i < list.size(); ++i)
        add_ill_formed(lines, identity_text(list.identity_at(i), list.type().identity()), list.at(i),
                       list.type(), "");
    if (lines.empty())
        lines.push_back("what would be written cannot be read: " + reports.substr(0, reports.find('\n')));
    return lines;
}

/// Gathers the differences of all records.
class loss_list {
public:
    loss_list(const record_kind &kind, const form &to) : kind_(kind), to_(to), of_form_(to.losses.size()) {}

    void compare(const record_pair &pair) {
        if (!pair.before || !pair.after) {
            of_values_.push_back(pair.name + (pair.before ? ": the record is left out"
                                                          : ": a record that was not there appears"));
            return;
        }
        for (const difference &one : differences(*pair.before, *pair.after, *kind_.type)) {
            const std::string line = pair.name + ": " + difference_text(one, "becomes");
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
                    .push_back(std::string(to_.name) + " changes " + loss.field + " in " +
                               counted(of_form_[i].records, kind_.records) + ", such as " +
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
    const std::unique_ptr<record_list> back = kind.make(how);
    int problems = 0;
    const std::string reports = held_output({1, 2}, [&] { problems = back->read_back(text); });
    if (problems != 0)
        return {{}, ill_formed_texts(list, readable_diagnostics(reports, to.name))};
    loss_list losses(kind, to);
    if (back->size() != list.size()) { // records are left out: those that are there are matched by identity
        for_each_pair(list, *back, [&](const record_pair &pair) { losses.compare(pair); });
        return losses.result();
    }
    for (size_t i = 0; i < list.size(); ++i)
        losses.compare({identity_text(list.identity_at(i), list.type().identity()), list.at(i), back->at(i)});
    return losses.result();
}
