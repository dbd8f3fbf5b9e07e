#include "check/kept_lists.h"

#include <cstdlib>
#include <set>

#include "files/standard_streams.h"
#include "parse_chan_descr.h"
#include "parse_env_index_dictionary.h"
#include "parse_ev_list.h"

namespace {

template <class Record> using record_vector = std::vector<Record *>;

/// Reads into a new list, which `clean` releases in the end.
template <class Record, class Read, class Clean>
std::shared_ptr<const record_vector<Record>> kept(std::string path, Read read, Clean clean) {
    std::shared_ptr<record_vector<Record>> list(new record_vector<Record>,
                                                [clean](record_vector<Record> *own) {
                                                    clean(own);
                                                    delete own;
                                                });
    held_output({1, 2}, [&] { (void)read(path.data(), list.get()); });
    return list;
}

void clean_events(record_vector<zeb5_ev_entry> *list) {
    for (zeb5_ev_entry *entry : *list)
        for (zeb5_ev_sb_list *block : *entry->sb_list)
            if (block->ch_list->empty()) { // the library does not release these
                delete block->ch_list;
                block->ch_list = nullptr;
            }
    zeb5_clean_ev_list(list);
}

/// A dictionary may hold an entry twice.
void clean_dictionary(record_vector<zeb5_env_index_dictionary_entry_2010> *list) {
    for (auto *entry : std::set<zeb5_env_index_dictionary_entry_2010 *>(list->begin(), list->end()))
        std::free(entry);
}

} // namespace

kept_list kept_channels(std::string path) {
    return kept<chan_descr_2010>(
        std::move(path),
        [](char *file, auto *list) { return zeb5_load_master_daq_channel_description_file(list, file); },
        clean_chan_desr_list);
}

kept_list kept_events(std::string path) {
    return kept<zeb5_ev_entry>(std::move(path), zeb5_parse_ev_list_readf, clean_events);
}

kept_list kept_dictionary(std::string path) {
    return kept<zeb5_env_index_dictionary_entry_2010>(std::move(path), parse_env_index_dict_readf_2010,
                                                      clean_dictionary);
}

std::shared_ptr<const std::vector<ZEB5GigEFeature *>> kept_features(std::string path) {
    return kept<ZEB5GigEFeature>(std::move(path), zeb5_fill_gige_descr, zeb5_clean_gige_descr);
}
