#ifndef ZEB5_DESCR_EXTRACTOR_H
#define ZEB5_DESCR_EXTRACTOR_H

#include <vector>

#include "parse_chan_descr.h"
#include "zeb5_export.h"

/// Reads channel descriptions from several sources, which are file names or documents in memory. Different
/// extractors may read at the same time on different threads.
class ZEB5_API descr_extractor {
public:
    descr_extractor(); // mode EXTR_FROM_FILE

    /// Whether `ent` occurs in `in`.
    bool in_vector(const std::vector<int> &in, int ent);

    /// Appends the channels of every source, in order, to `out`. Duplicates are merged where the reader
    /// merges them; `shift` is that of parse_descr_list_read(). Returns TRUE WHEN THE LAST SOURCE FAILED or
    /// `source` is null, and leaves `*total` as it was. Otherwise returns false and sets `*total`, unless
    /// `total` is null, to the number of sources read without errors. The caller owns the new records.
    bool get_descriptions(std::vector<char *> *source, int *total, std::vector<chan_descr_2010 *> *out,
                          bool shift);

    /// EXTR_FROM_FILE or EXTR_FROM_XML; with any other mode nothing is read.
    void set_mode(int new_mode);
    int get_mode();

private:
    int mode;
};

#endif
