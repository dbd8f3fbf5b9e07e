#include "documents.h"

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <stdexcept>

#include <unistd.h>

#include "parse_env_index_dictionary.h"

namespace bench {

namespace {

template <std::size_t N, class... Value> void print(char (&field)[N], const char *format, Value... value) {
    std::snprintf(field, N, format, value...);
}

template <class... Value> void append(std::string &out, const char *format, Value... value) {
    char line[512];
    std::snprintf(line, sizeof line, format, value...);
    out += line;
}

constexpr char declaration[] = "<?xml version=\"1.0\" encoding=\"ISO-8859-1\" ?>\n";

} // namespace

void add_channels(channel_list &list, int channels) {
    list.reserve(list.size() + static_cast<std::size_t>(channels));
    for (int i = 0; i < channels; ++i) {
        auto channel = std::make_unique<chan_descr_2010>();
        print(channel->prop_name, "LARKMOOR.DIAG/BPM/UND%07d/X.POSITION", i);
        print(channel->daq_name, "BPM%07d.X", i);
        print(channel->prop_desc, "%s", "horizontal beam position");
        print(channel->units, "%s", "mm");
        print(channel->sb_name, "LARKMOOR.DAQ/SB%d", i % 8);
        print(channel->subsystem, "%s", "DIAG");
        channel->ev_type = 1U << ZEB5_EV_NORMAL;
        channel->dtype = 1U << ZEB5_BLOCK_SINGLE;
        channel->stream = 3;
        channel->max_size = 16; // gives DAQvariables the dimension, too
        auto dim = std::make_unique<dim_descr>();
        print(dim->dim_name, "%s", "time");
        print(dim->units, "%s", "us");
        print(dim->dim_desc, "%s", "bunch in train");
        channel->dims.push_back(dim.release());
        channel->ndims = 1;
        list.push_back(channel.release());
    }
}

std::string written(channel_list &list, dialect form) {
    std::string document;
    dump_chan_desr(&list, nullptr, 2, form, -1, &document, nullptr);
    return document;
}

std::string channel_document(int channels, dialect form) {
    own_channels records;
    add_channels(records.list, channels);
    return written(records.list, form);
}

std::string event_list_document(int entries) {
    std::string out = declaration;
    out += "<BMR>\n";
    for (int i = 0; i < entries; ++i) {
        append(out, "<EVENT>\n<TYPE>%d</TYPE>\n<TMASK>0x%x</TMASK>\n<PRIORITY>%d</PRIORITY>\n", i % 32,
               i % 255 + 1, i % 4);
        append(out, "<SBLOCK>BPM_SRV%d</SBLOCK>\n<CHLIST>\n", i % 8);
        for (int k = 0; k < 3; ++k)
            append(out, "<CHAN>BPM%06d.%c</CHAN>\n", i, 'X' + k);
        out += "</CHLIST>\n</EVENT>\n";
    }
    return out + "</BMR>\n";
}

std::string dictionary_document(int entries) {
    std::vector<zeb5_env_index_dictionary_entry_2010> records(static_cast<std::size_t>(entries));
    std::vector<zeb5_env_index_dictionary_entry_2010 *> list;
    for (auto &record : records) {
        record.index = static_cast<std::int32_t>(list.size());
        print(record.data.env_prop, "LARKMOOR.RF/CTRL/A%06d/SETPOINT.AMPL", record.index);
        record.data.env_ch_abs_delta = 0.5F;
        record.data.env_ch_rel_delta = 0.01F;
        list.push_back(&record);
    }
    std::string document;
    dump_env_index_dict_2010(&list, nullptr, 3, -1, &document);
    return document;
}

std::string camera_document(std::size_t bytes) {
    static constexpr const char *kinds[] = {"Integer", "Float", "Boolean", "Command", "IntReg", "Int64"};
    static constexpr char root_end[] = "</RegisterDescription>\n";
    std::string out = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                      "<RegisterDescription ModelName=\"Dipper-1280\" VendorName=\"Fennmark\">\n";
    for (int i = 0; out.size() + sizeof root_end + 400 < bytes; ++i) {
        const char *kind = kinds[static_cast<std::size_t>(i) % std::size(kinds)];
        append(out, "  <%s Name=\"Feature%06d\">\n    <ToolTip>Feature %d of the camera</ToolTip>\n", kind, i,
               i);
        append(out, "    <Description>What feature %d does, and in which units it is given.</Description>\n",
               i);
        append(out, "    <pValue>Feature%06dReg</pValue>\n    <Min>0</Min>\n    <Max>%d</Max>\n  </%s>\n", i,
               i + 1, kind);
    }
    return out + root_end;
}

document_file::document_file(const std::string &text)
    : path_((std::filesystem::temp_directory_path() / "zeb5xml-bench-XXXXXX").string()) {
    const int file = mkstemp(path_.data());
    std::unique_ptr<FILE, int (*)(FILE *)> out(file == -1 ? nullptr : fdopen(file, "w"), std::fclose);
    if (!out || std::fwrite(text.data(), 1, text.size(), out.get()) != text.size() || std::fflush(out.get()))
        throw std::runtime_error("cannot write " + path_);
}

document_file::~document_file() {
    std::error_code none; // a file that cannot be removed is no reason to lose the results
    std::filesystem::remove(path_, none);
}

} // namespace bench
