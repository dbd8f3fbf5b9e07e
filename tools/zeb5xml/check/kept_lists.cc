#include "check/kept_lists.h"

#include "files/standard_streams.h"
#include "zeb5xml.hpp"

namespace {

/// Reads into a new list, whatever the result is.
template <class List, class Read>
std::shared_ptr<const typename List::plain_list> kept(std::string path, Read read) {
    const auto list = std::make_shared<List>();
    held_output({1, 2}, [&] { (void)read(path.data(), &list->plain()); });
    return {list, &list->plain()};
}

} // namespace

kept_list kept_channels(std::string path) {
    return kept<zeb5xml::channel_list>(std::move(path), [](char *file, auto *list) {
        return zeb5_load_master_daq_channel_description_file(list, file);
    });
}

kept_list kept_events(std::string path) {
    return kept<zeb5xml::event_list>(std::move(path), zeb5_parse_ev_list_readf);
}

kept_list kept_dictionary(std::string path) {
    return kept<zeb5xml::env_dictionary>(std::move(path), parse_env_index_dict_readf_2010);
}

std::shared_ptr<const std::vector<ZEB5GigEFeature *>> kept_features(std::string path) {
    return kept<zeb5xml::camera_features>(std::move(path), zeb5_fill_gige_descr);
}
