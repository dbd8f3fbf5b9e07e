/// Writes the XML schema of one kind of document from the rows that its reader is checked against.
/// Usage: write_schema ROOT

#include <iostream>
#include <string>

#include "elements/chan_descriptions_elements.h"
#include "elements/daq_variables_elements.h"
#include "elements/env_index_dictionary_elements.h"
#include "elements/event_list_elements.h"

namespace {

using zeb5::document_elements;
using zeb5::element_row;
using zeb5::value_kind;

/// Text without white space at its ends; the second one without what a writer cannot give back.
constexpr char any_text[] = R"((\S|\S(.|\n|\t)*\S)?)";
constexpr char writable_text[] = R"(([!-%'-;=-~]|[!-%'-;=-~][ -%'-;=-~\n\t]*[!-%'-;=-~])?)";
constexpr char decimal[] = R"(\s*\+?([0-9]+(\.[0-9]*)?|\.[0-9]+)([eE][+\-]?[0-9]+)?\s*)";
constexpr char hexadecimal[] = R"(\s*0x[0-9a-fA-F]{1,8}\s*)";

class schema_writer {
public:
    schema_writer(const document_elements &kind, bool is_written) : kind_(kind), is_written_(is_written) {}

    std::string write() {
        line("<?xml version=\"1.0\" encoding=\"UTF-8\"?>");
        line("<!-- Made from the tables of the readers; what it cannot say is found by `zeb5xml check`. -->");
        begin("xs:schema", "xmlns:xs=\"http://www.w3.org/2001/XMLSchema\"");
        begin("xs:element", named(kind_.root));
        begin("xs:complexType");
        write_choice(zeb5::root_level, {});
        end("xs:complexType");
        write_keys();
        end("xs:element");
        for (const element_row &row : kind_.rows)
            if (row.value == value_kind::TEXT && !row.attribute.empty())
                write_text(row, named(std::string(row.name) + "Text"));
        end("xs:schema");
        return std::move(text_);
    }

private:
    // Lines

    void line(const std::string &what) { text_.append(2 * depth_, ' ').append(what).append("\n"); }
    void begin(const std::string &name, const std::string &attributes = "") {
        line("<" + name + (attributes.empty() ? "" : " " + attributes) + ">");
        ++depth_;
    }
    void end(const std::string &name) {
        --depth_;
        line("</" + name + ">");
    }
    static std::string named(std::string_view name) { return "name=\"" + std::string(name) + "\""; }
    void facet(const std::string &name, const std::string &value) {
        line("<xs:" + name + " value=\"" + escaped(value) + "\"/>");
    }
    static std::string escaped(const std::string &text) {
        std::string result;
        for (const char c : text)
            result += c == '&' ? "&amp;" : c == '<' ? "&lt;" : std::string(1, c);
        return result;
    }

    // Elements

    /// Whether what belongs to the record stands behind its element, and not in it.
    static bool is_flat(const element_row &row) {
        return row.opens != zeb5::no_level && row.attribute.empty() &&
               (row.is_identity || row.value == value_kind::TEXT);
    }

    bool has_rows(int level) const {
        for (const element_row &row : kind_.rows)
            if (row.level == level)
                return true;
        return false;
    }

    /// The elements of a level, in any order and number; `around` is the element that they stand in.
    void write_choice(int level, std::string_view around) {
        begin("xs:choice", "minOccurs=\"0\" maxOccurs=\"unbounded\"");
        for (const element_row &row : kind_.rows)
            if (row.level == level && !row.is_stray && (row.only_in.empty() || row.only_in == around))
                write_member(row);
        end("xs:choice");
    }

    /// An element, with what follows it if that belongs to it.
    void write_member(const element_row &row) {
        if (!is_flat(row) || !has_rows(row.opens))
            return write_element(row, "");
        begin("xs:sequence");
        write_element(row, "");
        if (row.is_identity)
            write_choice(row.opens, row.name);
        else
            for (const element_row &inner : kind_.rows)
                if (inner.level == row.opens)
                    write_element(inner, " minOccurs=\"0\"");
        end("xs:sequence");
    }

    void write_element(const element_row &row, const std::string &occurrence) {
        begin("xs:element", named(row.name) + occurrence);
        const bool is_group = row.opens != zeb5::no_level && !is_flat(row) && row.value != value_kind::TEXT;
        if (is_group)
            write_group(row);
        else if (!row.attribute.empty())
            write_text_with_attribute(row);
        else
            write_simple(row);
        if (is_group)
            write_single_elements(row.opens);
        end("xs:element");
    }

    void write_group(const element_row &row) {
        const bool has_number = row.value != value_kind::NONE;
        begin("xs:complexType", has_number ? "mixed=\"true\"" : "");
        const element_row *first = nullptr; // that lists the record, and must come before all else
        for (const element_row &inner : kind_.rows)
            if (inner.level == row.opens && inner.is_identity && is_flat(inner))
                first = &inner;
        if (first)
            write_member(*first);
        else
            write_choice(row.opens, row.name);
        if (!row.attribute.empty())
            write_attribute(row);
        end("xs:complexType");
    }

    void write_text_with_attribute(const element_row &row) {
        begin("xs:complexType");
        begin("xs:simpleContent");
        begin("xs:extension", "base=\"" + std::string(row.name) + "Text\"");
        write_attribute(row);
        end("xs:extension");
        end("xs:simpleContent");
        end("xs:complexType");
    }

    void write_attribute(const element_row &row) {
        begin("xs:attribute", named(row.attribute) + " use=\"required\"");
        write_integer(row.least, row.most);
        end("xs:attribute");
    }

    // Values

    void write_simple(const element_row &row) {
        switch (row.value) {
        case value_kind::TEXT:
            return write_text(row);
        case value_kind::INTEGER:
        case value_kind::MASK:
            return write_integer(row.least, row.most);
        case value_kind::UNSIGNED:
            return write_unsigned(row.most);
        case value_kind::REAL:
            return write_pattern(decimal);
        default:
            begin("xs:simpleType");
            line("<xs:restriction base=\"xs:string\"/>");
            end("xs:simpleType");
        }
    }

    void write_text(const element_row &row, const std::string &name = "") {
        begin("xs:simpleType", name);
        begin("xs:restriction", "base=\"xs:string\"");
        facet("pattern", is_written_ ? writable_text : any_text);
        if (row.is_identity || (row.opens != zeb5::no_level && row.attribute.empty()))
            facet("minLength", "1");
        if (row.size != 0)
            facet("maxLength", std::to_string(row.size - 1));
        end("xs:restriction");
        end("xs:simpleType");
    }

    void write_integer(std::int64_t least, std::int64_t most) {
        begin("xs:simpleType");
        begin("xs:restriction", "base=\"xs:integer\"");
        facet("minInclusive", std::to_string(least));
        facet("maxInclusive", std::to_string(most));
        end("xs:restriction");
        end("xs:simpleType");
    }

    void write_pattern(const char *pattern) {
        begin("xs:simpleType");
        begin("xs:restriction", "base=\"xs:string\"");
        facet("pattern", pattern);
        end("xs:restriction");
        end("xs:simpleType");
    }

    void write_unsigned(std::int64_t most) {
        begin("xs:simpleType");
        begin("xs:union");
        write_integer(0, most);
        write_pattern(hexadecimal);
        end("xs:union");
        end("xs:simpleType");
    }

    // What may stand only once

    void write_constraint(const std::string &kind, const std::string &name, const std::string &selector,
                          const std::string &field) {
        begin("xs:" + kind, named(name));
        line("<xs:selector xpath=\"" + selector + "\"/>");
        line("<xs:field xpath=\"" + field + "\"/>");
        end("xs:" + kind);
    }

    /// A field that finds two elements is an error, so no value need be compared.
    void write_single_elements(int level) {
        const std::string group = std::to_string(++groups_);
        for (const element_row &row : kind_.rows) {
            const bool is_inside = row.level == level || is_flat_level_of(row.level, level);
            if (is_inside && row.opens == zeb5::no_level && !row.is_stray)
                write_constraint("unique", "one-" + std::string(row.name) + "-" + group, ".",
                                 std::string(row.name));
        }
        for (const element_row &row : kind_.rows)
            if (row.level == level && !row.attribute.empty())
                write_constraint("unique", "each-" + std::string(row.name) + "-" + group,
                                 std::string(row.name), "@" + std::string(row.attribute));
    }

    /// Whether elements of the level stand directly in the group of `outer`.
    bool is_flat_level_of(int level, int outer) const {
        for (const element_row &row : kind_.rows)
            if (row.opens == level && row.level == outer && row.is_identity && is_flat(row))
                return true;
        return false;
    }

    /// Each record has its identity, and no two have the same.
    void write_keys() {
        for (const element_row &row : kind_.rows) {
            if (!row.is_identity || row.opens != zeb5::no_level)
                continue;
            std::string records;
            for (const element_row &opener : kind_.rows)
                if (opener.opens == row.level)
                    records.append(records.empty() ? "" : "|").append(opener.name);
            write_constraint("key", "each-" + std::string(row.name), records, std::string(row.name));
        }
    }

    const document_elements &kind_;
    const bool is_written_; // by the library's own writers, which escape nothing
    std::string text_;
    std::size_t depth_ = 0;
    int groups_ = 0;
};

struct schema {
    const document_elements *kind;
    bool is_written;
};
constexpr schema schemas[] = {
    {&zeb5::chan_descriptions_elements, true},
    {&zeb5::daq_variables_elements, true},
    {&zeb5::event_list_elements, false},
    // The classic layout has room for the shorter names
    {&zeb5::env_index_dictionary_elements<zeb5_env_index_dictionary_entry>, true},
};

} // namespace

int main(int argc, char **argv) {
    for (const schema &one : schemas)
        if (argc == 2 && one.kind->root == argv[1]) {
            std::cout << schema_writer(*one.kind, one.is_written).write() << std::flush;
            return std::cout ? 0 : 1;
        }
    std::cerr << "Usage: write_schema CHANDESCRIPTIONS|DAQvariables|BMR|ENVINDEXDICT\n";
    return 2;
}
