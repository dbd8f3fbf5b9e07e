#include <memory>
#include <string>

#include "command_line/colour.h"
#include "files/failure.h"
#include "files/output.h"
#include "files/standard_streams.h"
#include "records/differences.h"
#include "records/form_losses.h"
#include "records/read_records.h"
#include "subcommands.h"
#include "values/json_text.h"
#include "words/words.h"

namespace {

struct diff_options {
    std::string before;
    std::string after;
    std::string format = "text";
    std::string color = "auto";
};

enum diff_status { SAME = 0, DIFFERENT = 1, TROUBLE = 2 };

/// The same difference, seen from the other side.
difference reversed(const difference &one) { return {one.path, one.field, one.row, one.is, one.was}; }

/// Which differences of two documents come from their dialects: from what one of the two forms does not hold.
class dialect_differences {
public:
    dialect_differences(const read_records &before, const read_records &after) {
        if (before.kind.form && std::string(before.kind.form) != after.kind.form)
            forms_ = {form_named(before.kind, before.kind.form), form_named(after.kind, after.kind.form)};
    }

    bool explain(const difference &one) const {
        for (const form *dialect : forms_)
            if (loss_of(*dialect, one) < dialect->losses.size() ||
                loss_of(*dialect, reversed(one)) < dialect->losses.size())
                return true;
        return false;
    }

    void tell_what_is_not_compared() const {
        for (const form *dialect : forms_)
            if (const texts fields = fields_not_held(*dialect); !fields.empty())
                tell("not compared, as readers do not get them from " + std::string(dialect->name) +
                     " as they are: " + joined(fields, ", "));
    }

private:
    std::vector<const form *> forms_; // empty: both documents are in one form
};

/// Writes the differences of one pair of records after the other.
class diff_output {
public:
    diff_output(const record_type &type, const dialect_differences &dialects, const diff_options &options)
        : type_(type), dialects_(dialects), as_json_(options.format == "json"), paint_(options.color) {}

    void add(const record_pair &pair) {
        if (!pair.before || !pair.after)
            return as_json_ ? add_whole_json(pair)
                            : add_line(pair.before ? paint_(RED, pair.name + ": removed")
                                                   : paint_(GREEN, pair.name + ": added"));
        for (const difference &one : differences(*pair.before, *pair.after, type_))
            if (!dialects_.explain(one))
                as_json_ ? add_json(pair.name, one) : add_text(pair.name, one);
    }

    diff_status finish() {
        if (as_json_)
            out_.add(any_ ? "\n]\n" : "[\n]\n");
        out_.flush();
        return any_ ? DIFFERENT : SAME;
    }

private:
    void add_line(const std::string &line) {
        out_.add(line + "\n");
        any_ = true;
    }

    void add_text(const std::string &name, const difference &one) {
        add_line(paint_(BOLD, name) + ": " + one.path + ": " + paint_(RED, side_text(one.was, *one.row)) +
                 " -> " + paint_(GREEN, side_text(one.is, *one.row)));
    }

    void add_object(const std::string &name, const std::string &members) {
        out_.add((any_ ? ",\n{\"record\":" : "[\n{\"record\":") + json_text(name) + "," + members + "}");
        any_ = true;
    }

    void add_json(const std::string &name, const difference &one) {
        const auto side = [&](const std::optional<value> &content) {
            if (!content)
                return std::string("null");
            const std::string text = json_text(*content, *one.row);
            return one.row->kind == PARTS ? text.substr(1, text.size() - 2) : text; // the part alone
        };
        add_object(name, "\"field\":" + json_text(one.path) + ",\"was\":" + side(one.was) +
                             ",\"is\":" + side(one.is));
    }

    void add_whole_json(const record_pair &pair) {
        add_object(pair.name, pair.before ? "\"removed\":" + json_text(*pair.before, type_)
                                          : "\"added\":" + json_text(*pair.after, type_));
    }

    const record_type &type_;
    const dialect_differences &dialects_;
    const bool as_json_;
    const painter paint_;
    bool any_ = false;
    output_buffer out_;
};

int compare(const diff_options &options) {
    const read_records before(options.before), after(options.after);
    before.require_all("nothing compared");
    after.require_all("nothing compared");
    if (before.kind.type != after.kind.type)
        throw failure(STATUS_DOCUMENT, before.source.name + " is " + before.kind.with_article + ", and " +
                                           after.source.name + " " + after.kind.with_article);
    const dialect_differences dialects(before, after);
    dialects.tell_what_is_not_compared();
    diff_output out(before.list->type(), dialects, options);
    for_each_pair(*before.list, *after.list, [&](const record_pair &pair) { out.add(pair); });
    return out.finish();
}

int run_diff(const diff_options &options) {
    if (options.before == "-" && options.after == "-")
        throw failure(STATUS_USAGE, "standard input cannot be both documents\nTry: zeb5xml diff --help");
    try {
        return compare(options);
    } catch (const failure &problem) {
        if (problem.status() != STATUS_DOCUMENT)
            throw;
        tell(problem.what());
        return TROUBLE;
    }
}

const char details[] =
    R"(Records are matched by identity: property, event type, index or name of the feature. Their order,
the date and the dialect make no difference. Readers get some fields not at all from DAQvariables, or
not as they were: these are compared only between two documents in this dialect. Of several records with one identity, those
that are most alike are compared.
One line tells a changed field, an added or a removed record; json is one array of objects.
)";

} // namespace

subcommand diff_subcommand() {
    auto options = std::make_shared<diff_options>();
    return {
        "diff",
        "Tell which records and fields of two documents differ",
        details,
        {{"A", &options->before, "Document of any kind; - is standard input", argument::REQUIRED},
         {"B", &options->after, "Document of the same kind, after the changes", argument::REQUIRED},
         {"--format", &options->format, "text (the default) or json", argument::OPTIONAL, {"text", "json"}},
         color_argument(options->color)},
        [options] { return run_diff(*options); },
        {{"What a new edition changes", "zeb5xml diff channels.xml new.xml"},
         {"The same for a program", "zeb5xml diff --format json channels.xml new.xml"}},
        {"differences", "no difference",
         "wrong command line, or a document is missing, cannot be read without errors or is of another "
         "kind"}};
}
