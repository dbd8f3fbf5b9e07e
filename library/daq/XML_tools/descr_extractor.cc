#include "descr_extractor.h"

#include <algorithm>

#include "steps/platform_hold.h"

namespace {

int read_source(int mode, char *source, std::vector<chan_descr_2010 *> *out, bool shift) {
    if (!out)
        return 2; // as the memory reader returns; the file reader does not check
    return mode == EXTR_FROM_FILE ? parse_descr_list_readf(source, out, shift, true)
                                  : parse_descr_list_read(source, out, shift, true);
}

} // namespace

descr_extractor::descr_extractor() : mode(EXTR_FROM_FILE) {}

bool descr_extractor::in_vector(const std::vector<int> &in, int ent) {
    return std::find(in.begin(), in.end(), ent) != in.end();
}

bool descr_extractor::get_descriptions(std::vector<char *> *source, int *total,
                                       std::vector<chan_descr_2010 *> *out, bool shift) {
    if (!source)
        return true;
    int last_result = 0;
    int successes = 0;
    if (!source->empty() && (mode == EXTR_FROM_FILE || mode == EXTR_FROM_XML)) {
        const zeb5::platform_hold platform; // once a source brings it up, it stays up for the next ones
        for (char *one : *source) {
            last_result = read_source(mode, one, out, shift);
            successes += last_result == 0;
        }
    }
    // Kept: only the last source decides; clients list their sources so that the one they need comes last
    if (last_result != 0)
        return true;
    if (total)
        *total = successes;
    return false;
}

void descr_extractor::set_mode(int new_mode) { mode = new_mode; }

int descr_extractor::get_mode() { return mode; }
