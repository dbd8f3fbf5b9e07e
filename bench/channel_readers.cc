#include "channel_readers.h"

#include <stdexcept>
#include <utility>

#include <malloc.h>

#include "bare.h"

namespace bench {

source::source(int channels, dialect form, source_kind kind)
    : source(channel_document(channels, form), form, kind) {}

source::source(std::string text, dialect form, source_kind kind) : form_(form), text_(std::move(text)) {
    if (kind == FILE_ON_DISK) {
        file_ = std::make_unique<document_file>(text_);
        text_ = std::string();
    }
}

void source::read(channel_list &list, bool delete_duplicated) {
    const int result = file_ ? parse_descr_list_readf(file_->path(), &list, false, delete_duplicated)
                             : parse_descr_list_read(text_.data(), &list, false, delete_duplicated);
    if (result != 0)
        throw std::runtime_error("the library met an error");
}

void source::read_with(const channel_peer &peer, channel_list &list) {
    if (file_)
        peer.read_file(file_->path(), form_, list);
    else
        peer.read(text_, form_, list);
}

void source::scan() {
    if (file_)
        bare_scan_file(file_->path());
    else
        bare_scan(text_);
}

/// From this many channels on, each run takes new memory from the system, as a process that reads such a list
/// once does. Otherwise the time would depend on what else is on the heap.
constexpr int channels_in_new_memory = 100000;

contender reading(const std::string &name, int channels, std::function<void(channel_list &)> read,
                  double goal) {
    const auto records = std::make_shared<own_channels>();
    return {.name = name,
            .units = static_cast<double>(channels),
            .run = [records, read = std::move(read)] { read(records->list); },
            .after =
                [records, channels] {
                    clean_chan_desr_list(&records->list);
                    channel_list().swap(records->list);
                    if (channels >= channels_in_new_memory && !keeps_memory)
                        malloc_trim(0);
                },
            .goal = goal};
}

void require_same_records(source &document, const std::string &name,
                          const std::function<void(channel_list &)> &read) {
    own_channels ours;
    own_channels theirs;
    document.read(ours.list);
    read(theirs.list);
    if (written(ours.list, CHANDESCRIPTIONS) != written(theirs.list, CHANDESCRIPTIONS))
        throw std::runtime_error(name + " makes other records");
}

std::string grouped(int number) {
    const std::string rest = std::to_string(number % 1000);
    if (number < 1000)
        return rest;
    return grouped(number / 1000) + "," + std::string(3 - rest.size(), '0') + rest;
}

} // namespace bench
