/// A process that reads for a long time: every reader in turn, good documents and bad ones mixed. What it
/// holds at the end is what it held after the first thousand readings.
///
///     zeb5xml_long_life COUNT held|alone
///
/// "held": an xml_platform lives all the time; "alone": each reader brings the XML library up by itself.
/// Prints one line of figures; exits with 1 when the process has grown.

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <malloc.h>
#include <optional>

#include "descriptors.h"
#include "every_reader.h"
#include "sanitized.h"
#include "silence.h"
#include "xml_platform.h"

namespace {

/// All readers, each with all that it may meet.
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

/// What the process holds. To the allocator, blocks in its caches are in use too, so that bytes go up and
/// down by some thousands; resident memory goes by pages.
struct holdings {
    std::size_t descriptors = open_descriptors();
    std::size_t bytes = mallinfo2().uordblks + mallinfo2().hblkhd; // 0 under a sanitizer
    long resident = resident_pages();

private:
    static long resident_pages() {
        std::ifstream statm("/proc/self/statm");
        long all = 0, resident = 0;
        statm >> all >> resident;
        return resident;
    }
};

constexpr std::size_t warm_up = 1000;
constexpr std::size_t bytes_of_tolerance = 16384;
constexpr long pages_of_tolerance = 16;

} // namespace

int main(int argc, char **argv) {
    const std::string form = argc == 3 ? argv[2] : "";
    if (form != "held" && form != "alone") {
        std::cerr << "usage: zeb5xml_long_life COUNT held|alone\n";
        return 2;
    }
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
              << late.bytes << ", resident pages " << early.resident << ' ' << late.resident << std::endl;
    const long more_pages =
        is_sanitized ? 0 : late.resident - early.resident; // a sanitizer keeps what was released
    const bool has_grown = late.descriptors != early.descriptors ||
                           late.bytes > early.bytes + bytes_of_tolerance || more_pages > pages_of_tolerance;
    return wrong != 0 || has_grown;
}
