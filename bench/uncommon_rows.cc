#include <memory>

#include "channel_readers.h"
#include "rows.h"
#include "uncommon_documents.h"

namespace bench {

namespace {

contest texts(int channels, spelling how) {
    const auto reading_of = [=](const char *name, text_choice which, double goal = 0) {
        const auto document =
            std::make_shared<source>(spelled_document(channels, how, which), CHANDESCRIPTIONS, MEMORY);
        require_same_records(*document, libxml2_reader.name,
                             [&](channel_list &list) { document->read_with(libxml2_reader, list); });
        return reading(
            name, channels, [document](channel_list &list) { document->read(list); }, goal);
    };
    contest result;
    result.contenders = {
        reading_of("one text of 100", ONE_TEXT_OF_100),
        reading_of("no text", NO_TEXT, 1.3),
        reading_of("all DESC and UNITS", ALL_DESC_AND_UNITS),
    };
    return result;
}

contest handing_over(int channels, source_kind kind, surprise where) {
    const auto document =
        std::make_shared<source>(handed_over_document(channels, where), CHANDESCRIPTIONS, kind);
    const auto read = [document](channel_list &list) { document->read(list); };
    source plain(channels, CHANDESCRIPTIONS, MEMORY);
    require_same_records(plain, "a document that is handed over", read);
    contest result;
    result.contenders = {
        reading("this library", channels, read),
        reading(
            "bare scan", channels, [document](channel_list &) { document->scan(); }, 1.6),
    };
    return result;
}

} // namespace

std::vector<timed_rows> uncommon_rows(run_size size) {
    static constexpr const char *places[] = {"at once", "in first channel", "in last channel"};
    static_assert(std::size(places) == SURPRISES);
    const std::vector<int> sizes = size == QUICK ? std::vector<int>{2000} : std::vector<int>{2000, 20000};
    std::vector<timed_rows> rows;
    for (const spelling how : {UTF8, LATIN1, REFERENCES})
        for (const int channels : sizes)
            rows.push_back(
                {format("texts that are not ASCII, %s, %s", spelling_names[how], grouped(channels).c_str()),
                 [=] { return texts(channels, how); }});
    for (const source_kind kind : {MEMORY, FILE_ON_DISK})
        for (const surprise where : {AT_ONCE, IN_FIRST_CHANNEL, IN_LAST_CHANNEL})
            for (const int channels : sizes)
                rows.push_back({format("handed over %s, %s, %s", places[where], source_names[kind],
                                       grouped(channels).c_str()),
                                [=] { return handing_over(channels, kind, where); }});
    return rows;
}

} // namespace bench
