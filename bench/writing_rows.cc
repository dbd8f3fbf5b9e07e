#include <cstring>
#include <memory>
#include <stdexcept>

#include <benchmark/benchmark.h>

#include "channel_readers.h"
#include "rows.h"

namespace bench {

namespace {

void require_same_records(channel_list &list, const channel_writer_peer &peer) {
    std::string text;
    peer.write(list, text);
    own_channels again;
    if (parse_descr_list_read(text.data(), &again.list, false, false) != 0 ||
        written(again.list, CHANDESCRIPTIONS) != written(list, CHANDESCRIPTIONS))
        throw std::runtime_error(std::string(peer.name) + " writes something else");
}

/// Every writer fills a new string.
contest writers(int channels, double memcpy_goal) {
    const auto records = std::make_shared<own_channels>();
    add_channels(records->list, channels);
    const auto document = std::make_shared<std::string>(written(records->list, CHANDESCRIPTIONS));

    const auto contender_of = [&](const char *name, std::function<void(std::string &)> write,
                                  double goal = 0) -> contender {
        const auto text = std::make_shared<std::string>();
        return {.name = name,
                .units = static_cast<double>(channels),
                .run =
                    [text, write = std::move(write)] {
                        write(*text);
                        benchmark::DoNotOptimize(text->data());
                        benchmark::ClobberMemory();
                    },
                .before = [text] { std::string().swap(*text); },
                .goal = goal};
    };
    const auto library = [&](const char *name, dialect form) {
        return contender_of(name, [records, form](std::string &text) {
            dump_chan_desr(&records->list, nullptr, 2, form, -1, &text, nullptr);
        });
    };
    const auto peer = [&](const channel_writer_peer &with) {
        require_same_records(records->list, with);
        return contender_of(with.name,
                            [records, &with](std::string &text) { with.write(records->list, text); });
    };
    contest result;
    result.contenders = {
        library("this library", CHANDESCRIPTIONS),
        library("this library, DAQvariables", DAQ_VARIABLES),
        contender_of(
            "memcpy to a new string", [document](std::string &text) { text = *document; }, memcpy_goal),
        {.name = "memcpy to the same memory",
         .units = static_cast<double>(channels),
         .run =
             [document, copy = std::make_shared<std::string>(*document)] {
                 std::memcpy(copy->data(), document->data(), document->size());
                 benchmark::ClobberMemory();
             }},
        peer(fprintf_writer),
        peer(libxml2_writer),
        peer(pugixml_writer),
    };
    return result;
}

} // namespace

std::vector<timed_rows> writing_rows(run_size size) {
    std::vector<timed_rows> rows;
    rows.push_back({"write CHANDESCRIPTIONS, 2,000", [] { return writers(2000, 7); }});
    if (size == FULL)
        rows.push_back({"write CHANDESCRIPTIONS, 20,000", [] { return writers(20000, 9); }});
    return rows;
}

} // namespace bench
