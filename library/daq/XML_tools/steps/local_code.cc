#include "steps/local_code.h"

#include <array>
#include <atomic>
#include <cstring>
#include <mutex>

#include <langinfo.h>

#include "steps/narrow_text.h"
#include "xml_platform.h"

namespace zeb5 {

namespace {

struct local_code {
    char name[32];
    bool keeps_ascii;
};

// The answers so far. They are read without the lock, so an answer is not changed once it is counted.
std::array<local_code, 16> known_codes;
std::atomic<std::size_t> known_count = 0;
std::mutex asking;

const local_code *find_known(const char *name) {
    const std::size_t count = known_count.load(std::memory_order_acquire);
    for (std::size_t i = 0; i < count; ++i)
        if (std::strcmp(known_codes[i].name, name) == 0)
            return &known_codes[i];
    return nullptr;
}

bool transcoder_keeps_ascii() {
    const xml_platform platform;
    XMLCh wide[128] = {};
    char plain[128] = {};
    for (unsigned i = 0; i < 127; ++i) {
        wide[i] = static_cast<XMLCh>(i + 1);
        plain[i] = static_cast<char>(i + 1);
    }
    const transcoded narrow = transcode(wide);
    return narrow && std::strcmp(narrow.get(), plain) == 0;
}

} // namespace

bool local_code_keeps_ascii() {
    const char *const name = nl_langinfo(CODESET); // of the locale, which may be the thread's own
    if (const local_code *const known = find_known(name))
        return known->keeps_ascii;
    const std::lock_guard<std::mutex> lock(asking);
    if (const local_code *const known = find_known(name))
        return known->keeps_ascii;
    const bool answer = transcoder_keeps_ascii();
    const std::size_t count = known_count.load(std::memory_order_relaxed);
    if (count < known_codes.size() && std::strlen(name) < sizeof local_code::name) { // else it is asked again
        std::strcpy(known_codes[count].name, name);
        known_codes[count].keeps_ascii = answer;
        known_count.store(count + 1, std::memory_order_release);
    }
    return answer;
}

} // namespace zeb5
