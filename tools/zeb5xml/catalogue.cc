#include <memory>
#include <string>
#include <vector>

#include "catalogue/catalogue_parts.h"
#include "files/each_file.h"
#include "files/failure.h"
#include "files/output.h"
#include "records/read_records.h"
#include "subcommands.h"
#include "values/field_names.h"
#include "values/json_text.h"
#include "values/type_names.h"
#include "words/words.h"

namespace {

struct catalogue_options {
    std::vector<std::string> files;
    std::string output = "-";
    std::string title = "Catalogue of the data acquisition";
};

// The records in the page: lists of values in the order of the rows, whose names stand there once

std::string compact_text(const record &fields, const record_type &type);

std::string compact_text(const value &one, const field_row &row) {
    if (row.kind == PARTS) {
        std::string list;
        for (const record &part : one.parts())
            list.append(list.empty() ? "" : ",").append(compact_text(part, *row.part));
        return "[" + list + "]";
    }
    if (has_names(row) && !is_mask(row))
        return json_text(names_of(row, one).front());
    return json_text(one, row);
}

std::string compact_text(const record &fields, const record_type &type) {
    std::string list = "[";
    for (size_t i = 0; i < type.rows.size(); ++i)
        list.append(i == 0 ? "" : ",").append(compact_text(fields.fields[i], type.rows[i]));
    return list + "]";
}

/// The names of the fields; behind each list of parts, those of the parts.
std::string field_names(const record_type &type) {
    std::string list;
    for (const field_row &row : type.rows) {
        list.append(list.empty() ? "" : ",").append(json_text(row.name));
        if (row.kind == PARTS)
            list.append(",").append(field_names(*row.part));
    }
    return "[" + list + "]";
}

std::string list_of(const std::vector<std::string> &words) {
    std::string list;
    for (const std::string &word : words)
        list.append(list.empty() ? "" : ",").append(json_text(word));
    return "[" + list + "]";
}

std::string event_type_list() {
    std::vector<std::string> names(last_event_type + 1);
    for (size_t type = 0; type < names.size(); ++type)
        names[type] = joined(event_names(std::uint32_t{1} << type), "");
    return list_of(names);
}

/// Names by number of the block type. No mask has the type 31, whose bit selects the types above.
std::string block_type_list() {
    std::vector<std::string> names;
    for (int type = 0; type <= last_block_type; ++type)
        names.push_back(is_block_type(type) ? joined(block_names(word_of_block(type)), "") : "");
    return list_of(names);
}

/// Gathers documents and makes the page of them.
class catalogue {
public:
    int add(const std::string &path) {
        const read_records records(path);
        documents_.append(documents_.empty() ? "" : ",\n")
            .append("{\"name\":" + json_text(value{records.source.name}, name_row) + ",\"kind\":" +
                    json_text(records.kind.name) + ",\"type\":" + json_text(records.list->type().name) +
                    ",\"complete\":" + (records.problems == 0 ? "true" : "false") +
                    ",\"fields\":" + field_names(records.list->type()) + ",\"records\":[");
        for (size_t i = 0; i < records.list->size(); ++i)
            documents_.append(i == 0 ? "\n" : ",\n")
                .append(compact_text(records.list->at(i), records.list->type()));
        documents_ += "]}";
        records.require_all("only " + counted(records.list->size(), records.kind.records) + " in the page");
        return STATUS_DONE;
    }

    bool is_empty() const { return documents_.empty(); }

    std::string page(const std::string &title) const {
        const std::string data =
            "{\"title\":" + json_text(value{title}, name_row) + ",\"version\":" + json_text(ZEB5XML_VERSION) +
            ",\"eventTypes\":" + event_type_list() + ",\"blockTypes\":" + block_type_list() +
            ",\"documents\":[" + documents_ + "]}";
        return filled(part_named("page.html"), data);
    }

private:
    /// A text that need not be UTF-8
    static constexpr field_row name_row = {"name", TEXT, nullptr, nullptr, 1};

    static std::string part_named(const std::string &name) {
        const catalogue_part *part = catalogue_parts;
        while (name != part->name)
            ++part;
        return part->text;
    }

    /// The template with the part in place of each {{name}}, and the data in place of {{data}}.
    static std::string filled(const std::string &page, const std::string &data) {
        std::string text;
        size_t at = 0;
        for (size_t mark; (mark = page.find("{{", at)) != std::string::npos;) {
            const size_t end = page.find("}}", mark);
            const std::string name = page.substr(mark + 2, end - mark - 2);
            text += page.substr(at, mark - at) + (name == "data" ? in_element(data) : part_named(name));
            at = end + 2;
        }
        return text + page.substr(at);
    }

    /// JSON that cannot end the element that it stands in, or begin a comment: < is in texts only.
    static std::string in_element(const std::string &json) {
        std::string text;
        for (const char c : json)
            c == '<' ? text.append("\\u003c") : text.append(1, c);
        return text;
    }

    std::string documents_;
};

int write_catalogue(const catalogue_options &options) {
    catalogue all;
    const int status = each_file(options.files, [&](const std::string &path) { return all.add(path); });
    if (!all.is_empty())
        write_output(options.output, all.page(options.title));
    return status;
}

} // namespace

subcommand catalogue_subcommand() {
    auto options = std::make_shared<catalogue_options>();
    return {
        "catalogue",
        "Write a page for the browser with all that documents describe",
        R"(One HTML file without any link to the network: channels to search, sort and filter, with their bits,
dimensions and statistics; a map of event types and subsystems; sizes; event lists and dictionaries,
linked to the channels that they name. Names of channels that no FILE describes are marked. Of a
faulty document, the page has the records up to the fault (of a camera file none), and says so.
Nothing is written when no document could be read.
)",
        {{"FILE", &options->files, "Documents of any kind; - is standard input", argument::REQUIRED},
         {"-o,--output",
          &options->output,
          "File to write, replaced only when all is done (default: -)",
          argument::OPTIONAL,
          {},
          {},
          "FILE"},
         {"--title", &options->title, "Heading of the page"}},
        [options] { return write_catalogue(*options); },
        {{"All that a site describes, in one page", "zeb5xml catalogue *.xml -o catalogue.html"}}};
}
