#include <bit>
#include <functional>
#include <memory>

#include "channel_readers.h"
#include "memory_use.h"
#include "rows.h"
#include "xml_platform.h"

namespace bench {

namespace {

using read_function = std::function<void(source &, channel_list &)>;

struct measured_reader {
    const char *name;
    read_function read;
    double most_allocations; // a channel; 0: no goal
    double most_beyond;      // megabytes; 0: no goal
};

constexpr double megabyte = 1 << 20;

/// Returns the megabytes of the table by which DAQvariables are looked up. It has slots of eight bytes, their
/// number is a power of two, and at least half of them are free. While the table grows, the smaller one
/// exists, too, but at that time the records still to come are larger than that.
double index_of_names(int channels) {
    return 8.0 * std::bit_ceil(2U * static_cast<unsigned>(channels)) / megabyte;
}

std::vector<measured_reader> all_readers(double most_beyond) {
    const auto peer = [](const channel_peer &with) -> measured_reader {
        return {with.name, [&with](source &document, channel_list &list) { document.read_with(with, list); },
                0, 0};
    };
    return {{"this library", [](source &document, channel_list &list) { document.read(list); }, 3.01,
             most_beyond},
            {"bare scan", [](source &document, channel_list &) { document.scan(); }, 0, 0},
            peer(libxml2_reader),
            peer(expat_reader),
            peer(pugixml_reader)};
}

memory_use measure(const measured_reader &reader, source &document, source &small) {
    own_channels records;
    return memory_used_by(
        [&] {
            static const xml_platform platform; // never destroyed: the child ends without destructors
            own_channels warm;
            reader.read(small, warm.list);
        },
        [&] { reader.read(document, records.list); });
}

constexpr int small_channels = 10; // shows what a parser needs for itself, which is subtracted

std::vector<table_row> read_memory(const std::string &title, int channels, dialect form) {
    source document(channels, form, FILE_ON_DISK);
    source small(small_channels, form, FILE_ON_DISK);
    std::vector<table_row> rows;
    const double most_beyond = 0.5 + (form == DAQ_VARIABLES ? index_of_names(channels) : 0);
    for (const measured_reader &reader : all_readers(most_beyond)) {
        const memory_use use = measure(reader, document, small);
        const memory_use small_use = measure(reader, small, small);
        const double allocations =
            static_cast<double>(use.allocations - small_use.allocations) / (channels - small_channels);
        const double beyond = (static_cast<double>(use.peak) - static_cast<double>(use.kept)) / megabyte;
        const double resident =
            (static_cast<double>(use.resident) - static_cast<double>(use.kept)) / megabyte;
        const auto goal = [](const char *text, double most) { return most == 0 ? "" : format(text, most); };
        const std::string name = reader.name;
        rows.push_back({title, name, format("%.3f allocations/channel", allocations), "", "",
                        goal("<= %.2f", reader.most_allocations),
                        verdict(allocations, reader.most_allocations)});
        rows.push_back({title, name + ", malloc", format("%.2f MB beyond records", beyond), "", "",
                        goal("<= %.2f", reader.most_beyond), verdict(beyond, reader.most_beyond)});
        rows.push_back({title, name + ", process", format("%.2f MB beyond records", resident), "", "",
                        goal("<= %.2f", reader.most_beyond), verdict(resident, reader.most_beyond)});
    }
    return rows;
}

} // namespace

std::vector<memory_rows> reading_memory_rows(run_size size) {
    const std::vector<int> sizes =
        size == QUICK ? std::vector<int>{2000} : std::vector<int>{2000, 20000, 200000, 1000000};
    std::vector<memory_rows> rows;
    for (const dialect form : {CHANDESCRIPTIONS, DAQ_VARIABLES})
        for (const int channels : sizes)
            rows.push_back(
                {format("memory, read %s, file, %s", dialect_names[form], grouped(channels).c_str()),
                 [=](const std::string &title) { return read_memory(title, channels, form); }});
    return rows;
}

} // namespace bench
