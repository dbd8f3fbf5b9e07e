#include "parse_chan_descr.h"

#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

#include "elements/chan_descr_tags.h"
#include "readers/chan_descriptions_reader.h"
#include "readers/channel_reading.h"
#include "readers/daq_variables_reader.h"
#include "readers/documents.h"
#include "text/owned_list.h"

namespace {

using namespace zeb5;

// These are all differences between reading channels from memory and from a file.

constexpr channel_variant memory_variant = {
    // Kept: callers of the file reader have always checked their list themselves
    .refuses_null_list = true,
    // Kept: master files may describe a property twice, and their readers rely on getting both
    .merges_repeated_prop = true,
    // Kept: DAQvariables files hold masks already, whatever their reader asks for
    .shifts_daq_ev_type = true,
    // Kept: people who try out documents see it, DAQ processes with their files do not
    .reports_untitled_bit = true,
    // Kept: log scanners know the two texts apart
    .no_bit_number = "No attribute",
    // Kept: consumers get all that a file says of one property; a later description in memory fills gaps only
    .merge_daq = merge_unknown,
};

constexpr channel_variant file_variant = {
    .refuses_null_list = false,
    .merges_repeated_prop = false,
    .shifts_daq_ev_type = false,
    .reports_untitled_bit = false,
    .no_bit_number = "No attribute: ",
    .merge_daq = merge_all,
};

template <class Document>
int read_channels(const channel_variant &variant, char *source, channel_vector *list, bool shift,
                  bool delete_duplicated) {
    if (variant.refuses_null_list && !list)
        return 2;
    return walk_document<Document>(source, [&](document_steps &steps, std::string_view root) {
        if (root == tags[TAG_ROOT][OF_CHANNEL]) {
            read_chan_descriptions(steps, *list, shift, variant.merges_repeated_prop && delete_duplicated);
            return 0;
        }
        if (root == daq_tags::root)
            return read_daq_variables(steps, *list, shift, variant);
        std::fprintf(stderr, "WRONG root tag: '%.*s' must be '%s or %s'\n", static_cast<int>(root.size()),
                     root.data(), tags[TAG_ROOT][OF_CHANNEL], daq_tags::root);
        return 1;
    });
}

} // namespace

int parse_descr_list_read(char *xml, std::vector<chan_descr_2010 *> *list, bool shift,
                          bool delete_duplicated) {
    return read_channels<memory_document>(memory_variant, xml, list, shift, delete_duplicated);
}

int parse_descr_list_readf(char *path, std::vector<chan_descr_2010 *> *list, bool shift,
                           bool delete_duplicated) {
    return read_channels<file_document>(file_variant, path, list, shift, delete_duplicated);
}

int zeb5_load_chan_descr(const zeb5_xml_chan_descr_header *tab, std::vector<chan_descr_2010 *> *list) {
    if (!tab || !list)
        return -1;
    constexpr std::uint32_t markers[] = {0xCDECDEF2, 0xCDECDEF3};
    if (tab->pattern != markers[0] && tab->pattern != markers[1])
        return -3;
    const std::int32_t head = sizeof *tab;
    if (tab->length <= head)
        return -4;
    std::string text(tab->xml, static_cast<std::size_t>(tab->length - head));
    return parse_descr_list_read(text.data(), list, false, true);
}

int zeb5_load_master_daq_channel_description_file(std::vector<chan_descr_2010 *> *list, char *file) {
    if (!list || !file || !*file)
        return -1;
    // Kept: the file reader lists duplicates all the same
    return parse_descr_list_readf(file, list, false, true);
}

int dump_chan_desr_from_xml(char *xml, char *file_name, int mode, int format, int fd) {
    owned_list<chan_descr_2010, clean_chan_desr_list> list;
    if (parse_descr_list_read(xml, &list.records, true, true) != 0) {
        std::printf("Failed to parse CHANDESCR list\n");
        return 3;
    }
    return dump_chan_desr(&list.records, file_name, mode, format, fd, nullptr, nullptr);
}
