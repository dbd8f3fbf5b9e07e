#include <memory>
#include <string>
#include <vector>

#include "files/each_file.h"
#include "files/failure.h"
#include "files/output.h"
#include "records/filters.h"
#include "records/read_records.h"
#include "subcommands.h"
#include "values/json_text.h"
#include "values/table_text.h"
#include "words/words.h"

namespace {

struct export_options {
    std::vector<std::string> files;
    std::string format = "jsonl";
    record_filters filters;
};

/// A form in which records are exported: a heading for tables, the records, and what stands around them.
struct export_format {
    const char *name;
    std::string (*line)(const texts &cells); // of a table; null: JSON
    const char *begin;
    const char *between; // records
    const char *end;
};
const export_format formats[] = {
    {"jsonl", nullptr, "", "\n", ""},
    {"json", nullptr, "[\n", ",\n", "]\n"},
    {"csv", csv_line, "", "", ""},
    {"tsv", tsv_line, "", "", ""},
};

std::vector<std::string> format_names() {
    std::vector<std::string> names;
    for (const export_format &format : formats)
        names.push_back(format.name);
    return names;
}

const export_format &format_of(const std::string &name) {
    const export_format *format = formats;
    while (name != format->name)
        ++format;
    return *format;
}

/// Writes the records of all documents to standard output, one after the other.
class exporter {
public:
    explicit exporter(const export_options &options)
        : format_(format_of(options.format)), with_source_(options.files.size() > 1),
          filters_(options.filters) {
        out_.add(format_.begin);
    }

    int add(const std::string &path) {
        const read_records records(path);
        filters_.apply(*records.list, records.kind, records.source.name);
        require_same_table(records);
        for (size_t i = 0; i < records.list->size(); ++i)
            add(records.list->at(i), records.list->type(), with_source_ ? records.source.name : "");
        records.require_all("only " + counted(records.list->size(), records.kind.records) + " exported");
        return STATUS_DONE;
    }

    void finish() {
        if (!format_.line && !is_first_)
            out_.add("\n");
        out_.add(format_.end);
        out_.flush();
    }

private:
    /// A table has one heading, and so records of one kind only.
    void require_same_table(const read_records &records) {
        if (!format_.line || type_ == &records.list->type())
            return;
        if (type_)
            throw failure(STATUS_DOCUMENT,
                          records.source.name + ": is a document of kind '" + records.kind.name +
                              "': one table cannot hold it beside the records before; export it apart");
        type_ = &records.list->type();
        out_.add(format_.line(table_heading(*type_, with_source_)));
    }

    void add(const record &fields, const record_type &type, const std::string &source) {
        if (!is_first_)
            out_.add(format_.between);
        is_first_ = false;
        out_.add(format_.line ? format_.line(table_row(fields, type, source))
                              : json_text(fields, type, source));
    }

    const export_format &format_;
    const bool with_source_;
    const record_filters &filters_;
    const record_type *type_ = nullptr; // of the table
    bool is_first_ = true;
    output_buffer out_;
};

int run_export(const export_options &options) {
    exporter all(options);
    const int status = each_file(options.files, [&](const std::string &path) { return all.add(path); });
    all.finish();
    return status;
}

const char details[] =
    R"(jsonl is one JSON object a line, json one array of them. csv (RFC 4180) and tsv have a heading and
one row a record; bits, dimensions and server blocks are JSON in one cell. Fields have the names of
the record structs; masks and types have their names beside them. Several FILEs add a column or
member "source". Texts are UTF-8; those of a field whose bytes are not UTF-8 are taken as
ISO-8859-1, and "latin_1" lists these fields. `zeb5xml convert --from json` reads jsonl and json
again.
)";

} // namespace

subcommand export_subcommand() {
    auto options = std::make_shared<export_options>();
    std::vector<argument> arguments = {
        {"FILE", &options->files, "Documents of any kind; - is standard input", argument::REQUIRED},
        {"--format", &options->format, "jsonl (the default), json, csv or tsv", argument::OPTIONAL,
         format_names()}};
    for (const argument &one : options->filters.arguments())
        arguments.push_back(one);
    return {"export",
            "Write every field of the records for other programs, as JSON or as a table",
            details,
            arguments,
            [options] { return run_export(*options); },
            {{"A table for a spreadsheet", "zeb5xml export --format csv channels.xml"},
             {"The properties of one event type, with jq",
              "zeb5xml export --event ENV channels.xml | jq -r .prop_name"}}};
}
