#include <memory>

#include "bare.h"
#include "channel_readers.h"
#include "rows.h"

namespace bench {

namespace {

/// Most that this library may take, as a multiple of each other reader; 0: no goal.
struct goals {
    double bare;
    double libxml2;
    double expat;
};

contest readers(int channels, dialect form, source_kind kind, const goals &most) {
    const auto document = std::make_shared<source>(channels, form, kind);
    const auto peer = [&](const channel_peer &with, double goal) {
        require_same_records(*document, with);
        return reading(
            with.name, channels, [document, &with](channel_list &list) { document->read_with(with, list); },
            goal);
    };
    contest result;
    result.contenders = {
        reading("this library", channels, [document](channel_list &list) { document->read(list); }),
        reading(
            "bare scan", channels, [document](channel_list &) { document->scan(); }, most.bare),
        peer(libxml2_reader, most.libxml2),
        peer(expat_reader, most.expat),
        peer(pugixml_reader, 0),
    };
    return result;
}

contest readers_without_platform(dialect form, source_kind kind) {
    const int channels = 10;
    const auto document = std::make_shared<source>(channels, form, kind);
    contest result;
    result.holds_platform = false;
    result.contenders = {
        reading("this library", channels, [document](channel_list &list) { document->read(list); }),
        reading(
            "Initialize and Terminate", channels, [](channel_list &) { bare_platform(); }, 1.06),
    };
    return result;
}

std::string title(const char *what, dialect form, source_kind kind, int channels, const char *more = "") {
    return format("%s %s, %s, %s%s", what, dialect_names[form], source_names[kind], grouped(channels).c_str(),
                  more);
}

} // namespace

std::vector<timed_rows> reading_rows(run_size size) {
    static constexpr goals small_goals = {0, 1.0, 0}; // ten channels: what a parser costs to set up counts
    static constexpr goals large_goals = {1.22, 0.78, 1.2};
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
