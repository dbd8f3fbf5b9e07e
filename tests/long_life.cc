/// A process that reads for a long time: each reader in turn reads good and bad documents. At the end the
/// process must hold as much memory and as many descriptors as after the first thousand readings.
///
///     zeb5xml_long_life COUNT held|alone
///
/// "held": an xml_platform lives all the time; "alone": each reader brings the XML library up by itself.
/// Prints one line of figures; exits with 1 when the two differ, or something was read wrongly.

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <malloc.h>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include <unistd.h>

#include "support/capture.h"
#include "support/descriptors.h"
#include "support/every_reader.h"
#include "support/sanitized.h"
#include "xml_platform.h"

namespace {

/// All readers, each with all of its documents.
std::vector<repeated_reading> all_readings() {
    std::vector<repeated_reading> readings;
    for (const reader_row &reader : every_reader)
        for (const std::string &document :
             {good_documents[reader.kind], bad_document(reader.kind), std::string("<other>root</other>"),
              std::string(), std::string("<!DOCTYPE r [<!ENTITY a '&b;'><!ENTITY b '&a;'>]><r>&a;</r>"),
              good_documents[reader.kind] + "\xff"}) {
            repeated_reading &added = readings.emplace_back(reader, document);
            added.expected = added.read();
        }
    return readings;
}

/// Starts the program anew without the allocator's caches. The blocks in these count as in use, so that bytes
/// would go up and down by some thousands, and lie so that some pages more are touched now and then.
void leave_out_caches(char **argv) {
    constexpr char name[] = "GLIBC_TUNABLES";
    constexpr std::string_view no_caches = "glibc.malloc.tcache_count=0:glibc.malloc.mxfast=0";
    const char *const current = std::getenv(name);
    if (current && current == no_caches)
        return;
    setenv(name, no_caches.data(), true);
    execv("/proc/self/exe", argv);
    std::perror("execv");
    std::exit(2);
}

/// The memory and the descriptors of the process.
struct holdings {
    std::size_t descriptors = open_descriptors();
    std::size_t bytes = mallinfo2().uordblks + mallinfo2().hblkhd; // 0 under a sanitizer
    long pages = own_pages();

private:
    /// Resident pages that are no file's, counted one by one: statm is behind by some on older systems.
    static long own_pages() {
        std::ifstream all("/proc/self/smaps_rollup");
        std::string word;
        while (all >> word && word != "Anonymous:")
            ;
        long kilobytes = 0;
        if (!(all >> kilobytes))
            throw std::runtime_error("cannot count pages");
        return kilobytes * 1024 / sysconf(_SC_PAGESIZE);
    }
};

constexpr std::size_t warm_up = 1000;
/// The heap's last page is given back and taken again, with the very same bytes in use: one count may find it
/// there and the other not.
constexpr long pages_of_tolerance = 1;

} // namespace

int main(int argc, char **argv) {
    const std::string form = argc == 3 ? argv[2] : "";
    if (form != "held" && form != "alone") {
        std::cerr << "usage: zeb5xml_long_life COUNT held|alone\n";
        return 2;
    }
    leave_out_caches(argv);
    const std::size_t count = std::strtoul(argv[1], nullptr, 10);
    std::optional<xml_platform> platform;
    if (form == "held")
        platform.emplace();

    std::optional<silence> quiet(std::in_place);
    auto readings = all_readings();
    std::size_t wrong = 0;
    holdings early;
    const auto begin = std::chrono::steady_clock::now();
    for (std::size_t i = 0; i < count; ++i) {
        repeated_reading &next = readings[i % readings.size()];
        if (!(next.read() == next.expected))
            ++wrong;
        if (i == warm_up)
            early = holdings();
    }
    const std::chrono::duration<double, std::micro> time = std::chrono::steady_clock::now() - begin;
    const holdings late;
    quiet.reset();

    std::cout << count << " readings, platform " << form << ": " << time.count() / static_cast<double>(count)
              << " us each, " << wrong << " wrong; after " << warm_up << " and at the end: descriptors "
              << early.descriptors << ' ' << late.descriptors << ", bytes in use " << early.bytes << ' '
              << late.bytes << ", pages of its own " << early.pages << ' ' << late.pages << std::endl;
    const long more_pages =
        is_sanitized ? 0 : late.pages - early.pages; // a sanitizer keeps what was released
    const bool is_changed =
        late.descriptors != early.descriptors || late.bytes != early.bytes || more_pages > pages_of_tolerance;
    return wrong != 0 || is_changed;
}
