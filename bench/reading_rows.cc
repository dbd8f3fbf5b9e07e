#include <memory>

#include "bare.h"
#include "channel_readers.h"
#include "kept_channels.h"
#include "rows.h"

namespace bench {

namespace {

/// The most time that this library may take, as a multiple of each other one's time; 0: no goal.
struct goals {
    double libxml2;
    double expat;
    double pugixml;
    double records;
};

contest readers(int channels, dialect form, source_kind kind, const goals &most) {
    const auto document = std::make_shared<source>(channels, form, kind);
    own_channels records;
    document->read(records.list);
    const auto kept = std::make_shared<kept_channels>(records.list);
    const auto other = [&](const char *name, std::function<void(channel_list &)> read, double goal) {
        require_same_records(*document, name, read);
        return reading(name, channels, std::move(read), goal);
    };
    const auto peer = [&](const channel_peer &with, double goal) {
        return other(
            with.name, [document, &with](channel_list &list) { document->read_with(with, list); }, goal);
    };
    contest result;
    result.contenders = {
        reading("this library", channels, [document](channel_list &list) { document->read(list); }),
        reading("bare scan", channels, [document](channel_list &) { document->scan(); }),
        peer(libxml2_reader, most.libxml2),
        peer(expat_reader, most.expat),
        peer(pugixml_reader, most.pugixml),
        other(
            "the same records alone", [kept](channel_list &list) { kept->make(list); }, most.records),
    };
    return result;
}

contest readers_without_platform(dialect form, source_kind kind) {
    const int channels = 10;
    const auto document = std::make_shared<source>(channels, form, kind);
    const auto read = [document](channel_list &list) { document->read(list); };
    contest result;
    result.holds_platform = false;
    result.contenders = {
        reading("this library", channels, read),
        reading("platform held", channels, read, 1.1),
        reading("Initialize and Terminate", channels, [](channel_list &) { bare_platform(); }),
    };
    result.contenders[1].holds_platform = true;
    return result;
}

std::string title(const char *what, dialect form, source_kind kind, int channels, const char *more = "") {
    return format("%s %s, %s, %s%s", what, dialect_names[form], source_names[kind], grouped(channels).c_str(),
                  more);
}

} // namespace

std::vector<timed_rows> reading_rows(run_size size) {
    static constexpr goals small_goals = {.libxml2 = 0, .expat = 0, .pugixml = 0.36, .records = 0};
    static constexpr goals large_goals = {.libxml2 = 0.13, .expat = 0.21, .pugixml = 0.25, .records = 2.5};
    const std::vector<int> sizes =
        size == QUICK ? std::vector<int>{2000} : std::vector<int>{2000, 20000, 200000};
    std::vector<timed_rows> rows;
    for (const dialect form : {CHANDESCRIPTIONS, DAQ_VARIABLES})
        for (const source_kind kind : {MEMORY, FILE_ON_DISK}) {
            rows.push_back({title("read", form, kind, 10, ", no platform"),
                            [=] { return readers_without_platform(form, kind); }});
            rows.push_back({title("read", form, kind, 10, ", platform held"),
                            [=] { return readers(10, form, kind, small_goals); }});
            for (const int channels : sizes)
                rows.push_back({title("read", form, kind, channels),
                                [=] { return readers(channels, form, kind, large_goals); }});
        }
    return rows;
}

} // namespace bench
