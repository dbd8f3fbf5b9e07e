#ifndef ZEB5_BENCH_CHANNEL_READERS_H
#define ZEB5_BENCH_CHANNEL_READERS_H

/// Readers of channels as contenders; the first is this library's.

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

/// Whether long lists, too, get memory that earlier runs have released.
inline bool keeps_memory = false;

/// A contender that fills a list. The release of the list is not measured.
contender reading(const std::string &name, int channels, std::function<void(channel_list &)> read,
                  double goal = 0);

/// Throws when `read` does not make the same records from the document as this library.
void require_same_records(source &document, const std::string &name,
                          const std::function<void(channel_list &)> &read);

/// Formats a number for titles, as in "2,000".
std::string grouped(int number);

} // namespace bench

#endif
