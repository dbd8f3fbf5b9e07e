#include "steps/plain_lane.h"

#include <array>
#include <cstring>
#include <mutex>
#include <string_view>

#include <langinfo.h>

#include "narrow_text.h"
#include "xml_platform.h"

namespace zeb5 {

lane_control lane;

namespace {

/// What is known of the local codes that documents were read in; the last one may be forgotten.
struct local_code {
    char name[32];
    bool keeps_ascii;
};
std::array<local_code, 8> known_codes;
std::size_t known_count = 0;
std::mutex known_mutex;

bool keeps_ascii() {
    const xml_platform platform;
    return transcoder_keeps_ascii();
}

} // namespace

bool is_lane_open() {
    if (!lane.is_open)
        return false;
    const std::string_view name = nl_langinfo(CODESET); // of the thread's locale
    if (name.size() >= sizeof local_code::name)
        return false;
    const std::lock_guard<std::mutex> lock(known_mutex);
    for (std::size_t i = 0; i < known_count; ++i)
        if (known_codes[i].name == name)
            return known_codes[i].keeps_ascii;
    local_code added{};
    name.copy(added.name, name.size());
    added.keeps_ascii = keeps_ascii();
    known_count = std::min(known_count + 1, known_codes.size());
    known_codes[known_count - 1] = added;
    return added.keeps_ascii;
}

void tell_lane_end(lane_end end) {
    if (lane.watch)
        lane.watch(end);
}

} // namespace zeb5
