#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <string_view>

#include <unistd.h>

#include "dictionary/env_index_dictionary_layouts.h"
#include "document_header.h"
#include "parse_env_index_dictionary.h"
#include "text/field_text.h"
#include "text/output_file.h"
#include "text/owned_list.h"
#include "text/xml_text.h"

namespace {

using namespace zeb5;

enum write_mode { TEXT_LINES = 1, XML_TO_FILE_AND_FD = 2, XML_TO_STRING = 3 };

template <class Layout> using entry_list = std::vector<typename Layout::entry *>;

// The XML document

template <int Number> constexpr element_tags tag(env_tags[Number]);

template <class Layout> std::string document(const entry_list<Layout> &list) {
    std::string declaration, date;
    set_xml_header(declaration);
    add_iso_date(date);
    xml_text out;
    out.put(declaration);
    out.open(tag<ENV_INDX_ROOT>);
    out.put(date);
    for (const auto *entry : list) {
        out.put(opening<tag<ENV_INDX_CHAN>>(), element<tag<ENV_INDX_INDX>>(entry->index),
                element<tag<ENV_INDX_PROP>>(entry->data.env_prop));
        out.put_float(tag<ENV_INDX_DABS>, entry->data.env_ch_abs_delta, "%f");
        out.put_float(tag<ENV_INDX_DREL>, entry->data.env_ch_rel_delta, "%f");
        out.close(tag<ENV_INDX_CHAN>);
    }
    out.close(tag<ENV_INDX_ROOT>);
    out.line_end();
    return out.take();
}

// The two text forms

template <class Layout> void print_entries(const entry_list<Layout> &list) {
    std::size_t number = 0;
    for (const auto *entry : list) {
        std::cout << "-------------- " << ++number << " -----------------" << std::endl;
        std::cout << " Index : " << entry->index << std::endl;
        std::cout << " Channel: " << field_text(entry->data.env_prop) << " DABS "
                  << entry->data.env_ch_abs_delta << " DREL " << entry->data.env_ch_rel_delta << std::endl;
    }
}

template <class Layout> void write_lines(FILE *out, const entry_list<Layout> &list) {
    for (const auto *entry : list) {
        const auto &data = entry->data;
        const std::string_view prop = field_text(name_or_undefined(data.env_prop));
        std::fprintf(out, "%d\t%.*s\t%f\t%f\n", entry->index, static_cast<int>(prop.size()), prop.data(),
                     static_cast<double>(data.env_ch_abs_delta), static_cast<double>(data.env_ch_rel_delta));
    }
}

template <class Layout> int refuse_argument() {
    // Kept: log scanners know this line, which ends after its opening apostrophe
    std::cout << Layout::writer << " invalid argument: '" << std::endl;
    return 2;
}

/// Writes the entries in the form of `mode`; `file` null and `fd` -1: none.
template <class Layout>
int deliver(const entry_list<Layout> &list, FILE *file, int mode, int fd, std::string *xml_str) {
    if (mode == TEXT_LINES) {
        if (!file && !list.empty())
            return refuse_argument<Layout>(); // the lines go to no other destination
        write_lines<Layout>(file, list);
    } else if (mode == XML_TO_FILE_AND_FD && (file || fd != -1)) {
        const std::string text = document<Layout>(list);
        if (file)
            (void)std::fwrite(text.data(), 1, text.size(), file); // see file_close
        // Kept: callers whose descriptor does not block see no failure of a short write
        if (fd != -1 && write(fd, text.data(), text.size()) == -1) {
            std::cout << Layout::write_failed << std::endl;
            return 2;
        }
    } else if (mode == XML_TO_STRING && xml_str) { // Kept: callers who name a file as well find it empty
        *xml_str = document<Layout>(list);
    }
    return 0;
}

template <class Layout>
int write_dictionary(const entry_list<Layout> *list, const char *file_name, int mode, int fd,
                     std::string *xml_str) {
    if (!list)
        return refuse_argument<Layout>();
    output_file file;
    if (file_name && *file_name) {
        file = open_output(Layout::writer, file_name);
        if (!file)
            return 1;
        // Kept: log scanners know this line and the one of closing, with two blanks each
        std::cout << Layout::writer << "  file: '" << file_name << "' has been created" << std::endl;
    }
    if (!file && fd == -1 && !xml_str) { // Kept: callers see the listing in every mode
        print_entries<Layout>(*list);
        return 0;
    }
    const int result = deliver<Layout>(*list, file.get(), mode, fd, xml_str);
    if (result == 0 && file) { // Kept: logs of a failed write have no line of closing
        file.reset();
        std::cout << Layout::writer << "  file: '" << file_name << "' has been closed" << std::endl;
    }
    return result;
}

/// Repeated pointers to an entry follow each other, as an entry is listed again only while it is current.
template <class Entry> void free_entries(std::vector<Entry *> *entries) {
    const auto end = std::unique(entries->begin(), entries->end());
    std::for_each(entries->begin(), end, [](Entry *entry) { std::free(entry); });
}

template <class Layout, class Read>
int convert_dictionary(Read read, char *xml, const char *file_name, int mode, int fd) {
    using entry = typename Layout::entry;
    owned_list<entry, free_entries<entry>> list;
    if (read(xml, &list.records) != 0) {
        std::printf("Failed to parse ENV INDEX DICT list\n");
        return 3;
    }
    return write_dictionary<Layout>(&list.records, file_name, mode, fd, nullptr);
}

} // namespace

int dump_env_index_dict(std::vector<zeb5_env_index_dictionary_entry *> *list, char *file_name, int mode,
                        int fd, std::string *xml_str) {
    return write_dictionary<env_layout_classic>(list, file_name, mode, fd, xml_str);
}

int dump_env_index_dict_2010(std::vector<zeb5_env_index_dictionary_entry_2010 *> *list, char *file_name,
                             int mode, int fd, std::string *xml_str) {
    return write_dictionary<env_layout_2010>(list, file_name, mode, fd, xml_str);
}

int dump_env_index_dict(char *xml, char *file_name, int mode, int fd) {
    return convert_dictionary<env_layout_classic>(parse_env_index_dict_list_read, xml, file_name, mode, fd);
}

int dump_env_index_dict_2010(char *xml, char *file_name, int mode, int fd) {
    return convert_dictionary<env_layout_2010>(parse_env_index_dict_list_read_2010, xml, file_name, mode, fd);
}
