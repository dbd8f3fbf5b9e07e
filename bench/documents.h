#ifndef ZEB5_BENCH_DOCUMENTS_H
#define ZEB5_BENCH_DOCUMENTS_H

/// Makes the documents that are read and the records that are written. Channel documents come from the
/// library's own writer.

#include <string>
#include <vector>

#include "parse_chan_descr.h"

namespace bench {

using channel_list = std::vector<chan_descr_2010 *>;

/// The writer's `format`.
enum dialect { CHANDESCRIPTIONS = 0, DAQ_VARIABLES = 1 };

/// A list that releases its records.
struct own_channels {
    channel_list list;

    own_channels() = default;
    own_channels(const own_channels &) = delete;
    own_channels &operator=(const own_channels &) = delete;
    ~own_channels() { clean_chan_desr_list(&list); }
};

/// Appends channels that all differ, each with one dimension.
void add_channels(channel_list &list, int channels);

/// In CHANDESCRIPTIONS, a channel has 457 bytes and 72 parser steps.
std::string channel_document(int channels, dialect form);
std::string written(channel_list &list, dialect form);

std::string event_list_document(int entries);
std::string dictionary_document(int entries);

/// A camera's features, as many as fit into `bytes`.
std::string camera_document(std::size_t bytes);

/// A document as a file, which is removed with the object.
class document_file {
public:
    explicit document_file(const std::string &text);
    ~document_file();
    document_file(const document_file &) = delete;
    document_file &operator=(const document_file &) = delete;

    char *path() { return path_.data(); } // not const, as the readers want it

private:
    std::string path_;
};

} // namespace bench

#endif
