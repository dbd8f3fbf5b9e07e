#include "descr_extractor.h"

#include <algorithm>
#include <optional>

#include <xercesc/util/XMLException.hpp>

#include "xml_platform.h"

namespace {

/// Brings the platform up once for all the sources of a call. Without it the readers try themselves, and
/// report the failure.
void hold(std::optional<xml_platform> &platform) {
    try {
        platform.emplace();
    } catch (const xercesc::XMLException &) {
        platform.reset();
    }
}

int read_source(int mode, char *source, std::vector<chan_descr_2010 *> *out, bool shift) {
    if (!out)
        return 2; // as the memory reader says; the file reader does not look
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
        std::optional<xml_platform> platform;
        hold(platform);
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
