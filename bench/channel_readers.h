#ifndef ZEB5_BENCH_CHANNEL_READERS_H
#define ZEB5_BENCH_CHANNEL_READERS_H

/// Readers of channels as contenders, this library's first.

#include <memory>

#include "contest.h"
#include "documents.h"
#include "peers.h"

namespace bench {

/// Where a document is read from.
enum source_kind { MEMORY, FILE_ON_DISK };
inline constexpr const char *source_names[] = {"memory", "file"};
inline constexpr const char *dialect_names[] = {"CHANDESCRIPTIONS", "DAQvariables"};

/// A document and, for FILE_ON_DISK, the file that has it.
class source {
public:
    source(int channels, dialect form, source_kind kind);
    source(std::string text, dialect form, source_kind kind);

    dialect form() const { return form_; }

    /// This library's reader. Throws unless everything was read.
    void read(channel_list &list, bool delete_duplicated = false);
    void read_with(const channel_peer &peer, channel_list &list);
    void scan();

private:
    dialect form_;
    std::string text_;
    std::unique_ptr<document_file> file_;
};

/// Whether long lists, too, get the memory that the runs before have released.
inline bool keeps_memory = false;

/// A contender that fills a list, which is released outside of the measurement.
contender reading(const std::string &name, int channels, std::function<void(channel_list &)> read,
                  double goal = 0);

/// Throws when `read` makes other records than this library makes of the document.
void require_same_records(source &document, const std::string &name,
                          const std::function<void(channel_list &)> &read);

/// "2,000": numbers in titles.
std::string grouped(int number);

} // namespace bench

#endif
