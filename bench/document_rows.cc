#include <algorithm>
#include <cstdlib>
#include <memory>
#include <stdexcept>

#include "bare.h"
#include "channel_readers.h"
#include "parse_env_index_dictionary.h"
#include "parse_ev_list.h"
#include "rows.h"

namespace bench {

namespace {

void require(bool done) {
    if (!done)
        throw std::runtime_error("the library met an error");
}

contest of_memory(const std::string &unit, int units, std::string text, std::function<void(char *)> read,
                  std::function<void()> release) {
    const auto document = std::make_shared<std::string>(std::move(text));
    contest result;
    result.unit = unit;
    result.contenders = {
        {.name = "this library",
         .units = static_cast<double>(units),
         .run = [document, read = std::move(read)] { read(document->data()); },
         .after = std::move(release)},
        {.name = "bare scan",
         .units = static_cast<double>(units),
         .run = [document] { bare_scan(*document); },
         .goal = 0.3},
    };
    return result;
}

contest event_lists(int entries) {
    const auto list = std::make_shared<std::vector<zeb5_ev_entry *>>();
    return of_memory(
        "entry", entries, event_list_document(entries),
        [list](char *text) { require(zeb5_parse_ev_list_read(text, list.get()) == 0); },
        [list] { zeb5_clean_ev_list(list.get()); });
}

template <class Entry> contest dictionaries(int entries, int (*read)(char *, std::vector<Entry *> *)) {
    const auto list = std::make_shared<std::vector<Entry *>>();
    return of_memory(
        "entry", entries, dictionary_document(entries),
        [list, read](char *text) { require(read(text, list.get()) == 0); },
        [list] {
            std::for_each(list->begin(), list->end(), std::free);
            list->clear();
        });
}

struct own_features {
    feature_list list;
    own_features() = default;
    own_features(const own_features &) = delete;
    own_features &operator=(const own_features &) = delete;
    ~own_features() { zeb5_clean_gige_descr(&list); }
};

bool same(const ZEB5GigEFeature *a, const ZEB5GigEFeature *b) {
    return a->type == b->type && a->name == b->name && a->extension == b->extension &&
           a->tooltip == b->tooltip && a->description == b->description;
}

contest cameras(std::size_t bytes) {
    const auto file = std::make_shared<document_file>(camera_document(bytes));
    own_features expected;
    require(!zeb5_fill_gige_descr(file->path(), &expected.list));
    const double features = static_cast<double>(expected.list.size());

    const auto contender_of = [&](const char *name, std::function<void(feature_list &)> read,
                                  double goal = 0) -> contender {
        const auto found = std::make_shared<own_features>();
        return {.name = name,
                .units = features,
                .run = [found, read = std::move(read)] { read(found->list); },
                .after = [found] { zeb5_clean_gige_descr(&found->list); },
                .goal = goal};
    };
    const auto peer = [&](const camera_peer &with, double goal = 0) {
        own_features found;
        with.read_file(file->path(), found.list);
        if (!std::equal(found.list.begin(), found.list.end(), expected.list.begin(), expected.list.end(),
                        same))
            throw std::runtime_error(std::string(with.name) + " finds other features");
        return contender_of(
            with.name, [file, &with](feature_list &list) { with.read_file(file->path(), list); }, goal);
    };
    contest result;
    result.unit = "feature";
    result.contenders = {
        contender_of("this library",
                     [file](feature_list &list) { require(!zeb5_fill_gige_descr(file->path(), &list)); }),
        contender_of("bare tree of Xerces-C", [file](feature_list &) { bare_dom_file(file->path()); }),
        peer(libxml2_camera),
        peer(pugixml_camera, 0.7),
    };
    return result;
}

} // namespace

std::vector<timed_rows> document_rows(run_size size) {
    const std::vector<int> sizes = size == QUICK ? std::vector<int>{2000} : std::vector<int>{2000, 20000};
    std::vector<timed_rows> rows;
    for (const int entries : sizes) {
        const std::string number = grouped(entries);
        rows.push_back({"read event list, memory, " + number, [=] { return event_lists(entries); }});
        rows.push_back({"read dictionary, memory, " + number,
                        [=] { return dictionaries(entries, parse_env_index_dict_list_read); }});
        rows.push_back({"read dictionary 2010, memory, " + number,
                        [=] { return dictionaries(entries, parse_env_index_dict_list_read_2010); }});
    }
    rows.push_back({"read camera, file, 1 MB", [] { return cameras(1 << 20); }});
    return rows;
}

} // namespace bench
